// Draws the library's toolbar icons. The PNGs are committed under parvex/resources/icons; run this
// again (make-icons <output folder>) after changing a drawing, so the artwork stays reproducible.
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <cstdio>
#include <functional>

namespace
{
constexpr int SIZE = 64; // drawn large; Qt scales down cleanly for 16-32 px tool bars

const QColor INK(0x2b, 0x2f, 0x36);
const QColor GREEN(0x2e, 0x9e, 0x4f);
const QColor RED(0xd0, 0x3b, 0x2f);
const QColor BLUE(0x2f, 0x6f, 0xd0);

void Save(const QString& aFolder, const char* aName, const std::function<void(QPainter&)>& aDraw)
{
  QImage lImage(SIZE, SIZE, QImage::Format_ARGB32_Premultiplied);
  lImage.fill(Qt::transparent);
  QPainter lPainter(&lImage);
  lPainter.setRenderHint(QPainter::Antialiasing);
  aDraw(lPainter);
  lPainter.end();
  const QString lPath = aFolder + QLatin1Char('/') + QLatin1String(aName);
  if (!lImage.save(lPath, "PNG")) {
    std::fprintf(stderr, "cannot write %s\n", qPrintable(lPath));
  }
}

// One half of a plug: a body with two prongs, pointing right, centred on (aX, aY).
void Plug(QPainter& aPainter, qreal aX, qreal aY, bool aMirror, const QColor& aColor)
{
  aPainter.save();
  aPainter.translate(aX, aY);
  if (aMirror) {
    aPainter.scale(-1, 1);
  }
  aPainter.setPen(Qt::NoPen);
  aPainter.setBrush(aColor);
  aPainter.drawRoundedRect(QRectF(-14, -15, 18, 30), 5, 5);
  aPainter.drawRect(QRectF(4, -10, 9, 6));
  aPainter.drawRect(QRectF(4, 4, 9, 6));
  aPainter.drawRect(QRectF(-26, -4, 14, 8)); // cable
  aPainter.restore();
}

void Triangle(QPainter& aPainter, QPointF a, QPointF b, QPointF c)
{
  QPainterPath lPath;
  lPath.moveTo(a);
  lPath.lineTo(b);
  lPath.lineTo(c);
  lPath.closeSubpath();
  aPainter.drawPath(lPath);
}
} // namespace

int main(int argc, char** argv)
{
  QGuiApplication lApp(argc, argv);
  if (argc != 2) {
    std::fprintf(stderr, "usage: make-icons <output folder>\n");
    return 2;
  }
  const QString lOut = QString::fromLocal8Bit(argv[1]);

  Save(lOut, "Connect.png", [](QPainter& p) {
    Plug(p, 23, 32, false, GREEN);
    Plug(p, 42, 32, true, GREEN);
  });
  Save(lOut, "Disconnect.png", [](QPainter& p) {
    Plug(p, 15, 32, false, INK);
    Plug(p, 49, 32, true, INK);
    p.setPen(QPen(RED, 6, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(26, 10), QPointF(38, 54));
  });
  Save(lOut, "Apply.png", [](QPainter& p) {
    p.setPen(QPen(GREEN, 9, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    QPainterPath lPath;
    lPath.moveTo(12, 34);
    lPath.lineTo(26, 48);
    lPath.lineTo(52, 16);
    p.drawPath(lPath);
  });
  Save(lOut, "Undo.png", [](QPainter& p) {
    p.setPen(QPen(BLUE, 7, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    // A counter-clockwise arc ending in an arrow head at its upper left.
    p.drawArc(QRectF(14, 16, 38, 36), 90 * 16, -250 * 16);
    p.setPen(Qt::NoPen);
    p.setBrush(BLUE);
    Triangle(p, QPointF(33, 4), QPointF(33, 28), QPointF(17, 16));
  });
  Save(lOut, "mm-Stop.png", [](QPainter& p) {
    p.setPen(Qt::NoPen);
    p.setBrush(INK);
    p.drawRoundedRect(QRectF(14, 14, 36, 36), 4, 4);
  });
  Save(lOut, "mm-Play.png", [](QPainter& p) {
    p.setPen(Qt::NoPen);
    p.setBrush(GREEN);
    Triangle(p, QPointF(18, 10), QPointF(18, 54), QPointF(54, 32));
  });
  Save(lOut, "mm-First.png", [](QPainter& p) {
    p.setPen(Qt::NoPen);
    p.setBrush(INK);
    p.drawRect(QRectF(12, 12, 7, 40));
    Triangle(p, QPointF(52, 12), QPointF(52, 52), QPointF(21, 32));
  });
  Save(lOut, "mm-Last.png", [](QPainter& p) {
    p.setPen(Qt::NoPen);
    p.setBrush(INK);
    p.drawRect(QRectF(45, 12, 7, 40));
    Triangle(p, QPointF(12, 12), QPointF(12, 52), QPointF(43, 32));
  });
  return 0;
}
