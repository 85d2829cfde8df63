#include "PtErrorLogForm.h"

#include "PtException.h"

#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QFontInfo>
#include <QHBoxLayout>
#include <QLoggingCategory>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {
Q_LOGGING_CATEGORY(lcErrors, "parvex.errors")

QList<PtErrorLogForm::Entry>& Log()
{
  static QList<PtErrorLogForm::Entry> sLog;
  return sLog;
}

QPointer<PtErrorLogForm>& Form()
{
  static QPointer<PtErrorLogForm> sForm;
  return sForm;
}
} // namespace

void PtErrorLogForm::LogError(const QString& aText)
{
  Entry lEntry;
  lEntry.mTime = QDateTime::currentDateTime();
  lEntry.mText = aText;
  Add(lEntry);
}

void PtErrorLogForm::LogError(const std::exception& aException)
{
  Entry lEntry;
  lEntry.mTime = QDateTime::currentDateTime();
  PtExtractException(aException, &lEntry.mCode, &lEntry.mText);
  Add(lEntry);
}

void PtErrorLogForm::Add(const Entry& aEntry)
{
  QList<Entry>& lLog = Log();
  lLog.append(aEntry);
  // A device that fails on every tick must not make the log grow without end.
  while (lLog.size() > MAX_ENTRIES) {
    lLog.removeFirst();
  }
  qCWarning(lcErrors).noquote() << EntryText(aEntry);
  if (Form()) {
    Form()->Refresh();
  }
}

QList<PtErrorLogForm::Entry> PtErrorLogForm::Entries()
{
  return Log();
}

void PtErrorLogForm::Clear()
{
  Log().clear();
  if (Form()) {
    Form()->Refresh();
  }
}

QString PtErrorLogForm::EntryText(const Entry& aEntry)
{
  QString lLine = aEntry.mTime.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
  if (aEntry.mCode != 0) {
    lLine += QStringLiteral("  [%1]").arg(aEntry.mCode);
  }
  // Continuation lines are indented so that every entry still starts with its time.
  QString lText = aEntry.mText;
  lText.replace(QLatin1Char('\n'), QStringLiteral("\n    "));
  return lLine + QStringLiteral("  ") + lText;
}

PtErrorLogForm* PtErrorLogForm::Open(QWidget* aParent)
{
  QPointer<PtErrorLogForm>& lForm = Form();
  if (!lForm) {
    lForm = new PtErrorLogForm(aParent);
  }
  lForm->show();
  lForm->raise();
  lForm->activateWindow();
  return lForm;
}

PtErrorLogForm* PtErrorLogForm::Instance()
{
  return Form();
}

PtErrorLogForm::PtErrorLogForm(QWidget* aParent)
    : QWidget(aParent, Qt::Window)
    , mLog(new QPlainTextEdit(this))
    , mCopy(new QPushButton(tr("Copy"), this))
    , mClear(new QPushButton(tr("Clear"), this))
    , mClose(new QPushButton(tr("Close"), this))
{
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(tr("Error Log"));
  mLog->setReadOnly(true);
  // Wrapped, so that a long message is read whole without scrolling sideways.
  mLog->setLineWrapMode(QPlainTextEdit::WidgetWidth);
  mLog->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  QFont lFont = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  if (!QFontInfo(lFont).fixedPitch()) {
    // Some platforms report a proportional font here; the columns of time and code need a fixed one.
    lFont.setFamily(QStringLiteral("monospace"));
    lFont.setStyleHint(QFont::TypeWriter);
  }
  mLog->setFont(lFont);
  mCopy->setToolTip(tr("Copy the whole log to the clipboard"));

  auto* lButtons = new QHBoxLayout();
  lButtons->addWidget(mCopy);
  lButtons->addWidget(mClear);
  lButtons->addStretch(1);
  lButtons->addWidget(mClose);

  auto* lLayout = new QVBoxLayout(this);
  lLayout->addWidget(mLog, 1);
  lLayout->addLayout(lButtons);
  resize(720, 320);

  connect(mCopy, &QPushButton::clicked, this, &PtErrorLogForm::PBCopyClicked);
  connect(mClear, &QPushButton::clicked, this, &PtErrorLogForm::PBClearClicked);
  connect(mClose, &QPushButton::clicked, this, &QWidget::close);
  Refresh();
}

QString PtErrorLogForm::Text() const
{
  return mLog->toPlainText();
}

void PtErrorLogForm::PBCopyClicked()
{
  QApplication::clipboard()->setText(Text());
}

void PtErrorLogForm::PBClearClicked()
{
  Clear();
}

void PtErrorLogForm::Refresh()
{
  QStringList lLines;
  for (const Entry& lEntry : qAsConst(Log())) {
    lLines.append(EntryText(lEntry));
  }
  mLog->setPlainText(lLines.join(QLatin1Char('\n')));
  // The newest error is the one the user came for.
  mLog->verticalScrollBar()->setValue(mLog->verticalScrollBar()->maximum());
  mCopy->setEnabled(!lLines.isEmpty());
  mClear->setEnabled(!lLines.isEmpty());
}
