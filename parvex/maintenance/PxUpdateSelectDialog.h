#pragma once

#include "ParvexExport.h"
#include "PtDialog.h"

#include <QList>
#include <QString>

class QListWidget;
class QPushButton;

// Lets the user choose one of the firmware files a device offers for update.
class PX_EXPORT PxUpdateSelectDialog : public PtDialog
{
  Q_OBJECT

public:
  // One file the device offers: its path, the kind of firmware it holds (the device's own
  // numbering, handed back to its update job) and what the list shows for it.
  struct FirmwareFile
  {
    QString mFile;
    unsigned char mKind = 0;
    QString mDescription;
  };

  PxUpdateSelectDialog(QWidget* aParent, const QList<FirmwareFile>& aFiles);

  // The selection after exec() returned Accepted.
  QString SelectedFile() const;
  unsigned char SelectedKind() const;

private Q_SLOTS:
  void LWFilesCurrentRowChanged(int aRow);

private:
  QList<FirmwareFile> mFiles;
  QListWidget* mList = nullptr;
  QPushButton* mOk = nullptr;
};
