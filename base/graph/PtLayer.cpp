#include "PtLayer.h"

const QString PtLayer::GENERIC_SANS_SERIF = QStringLiteral("Sans Serif");

PtLayer::PtLayer()
    : mColor(Qt::white)
    , mPen(Qt::white, 1.0)
    , mBrush(Qt::white)
{
  SetFont(GENERIC_SANS_SERIF, 8.0f);
}

void PtLayer::SetColor(const QColor& aColor)
{
  mColor = aColor;
  mPen.setColor(aColor);
  mBrush.setColor(aColor);
}

void PtLayer::SetFont(const QString& aFamily, float aPointSize)
{
  mFont = QFont(aFamily);
  if (aFamily == GENERIC_SANS_SERIF) {
    // The name alone finds nothing on a desktop without such a family; the hint makes the font
    // system fall back to whatever sans-serif face it has.
    mFont.setStyleHint(QFont::SansSerif);
  }
  mFont.setPointSizeF(aPointSize > 0.0f ? aPointSize : 1.0f);
}
