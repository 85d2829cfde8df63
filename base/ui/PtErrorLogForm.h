#pragma once

#include "ParvexTechExport.h"

#include <QDateTime>
#include <QList>
#include <QWidget>

#include <exception>

class QPlainTextEdit;
class QPushButton;

// The process-wide log of run-time errors and the window that shows it. Errors are logged from
// anywhere with the static LogError; the user opens the window to read them, copy them into a
// support request, or clear them. The log keeps the newest MAX_ENTRIES entries.
class PT_EXPORT PtErrorLogForm : public QWidget
{
  Q_OBJECT

public:
  struct Entry
  {
    QDateTime mTime;
    unsigned int mCode = 0; // 0: the error carried no code
    QString mText;
  };

  static constexpr int MAX_ENTRIES = 1000;

  static void LogError(const QString& aText);
  // Logs the exception's message with the code it carries (see PtExtractException).
  static void LogError(const std::exception& aException);

  static QList<Entry> Entries();
  static void Clear();
  // The entry as one line of the log: local date and time, the code when there is one, the text.
  static QString EntryText(const Entry& aEntry);

  // Opens the log window over aParent, or brings the open one to the front, and returns it.
  static PtErrorLogForm* Open(QWidget* aParent);
  // The open log window, or null.
  static PtErrorLogForm* Instance();

  // The whole log as the window shows it and as Copy puts it on the clipboard.
  QString Text() const;

private Q_SLOTS:
  void PBCopyClicked();
  void PBClearClicked();

private:
  explicit PtErrorLogForm(QWidget* aParent);
  void Refresh();
  static void Add(const Entry& aEntry);

  QPlainTextEdit* mLog = nullptr;
  QPushButton* mCopy = nullptr;
  QPushButton* mClear = nullptr;
  QPushButton* mClose = nullptr;
};
