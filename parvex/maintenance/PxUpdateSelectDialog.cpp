#include "PxUpdateSelectDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

PxUpdateSelectDialog::PxUpdateSelectDialog(QWidget* aParent, const QList<FirmwareFile>& aFiles)
    : PtDialog(aParent)
    , mFiles(aFiles)
{
  setWindowTitle(tr("Firmware Update"));
  auto* lLayout = new QVBoxLayout(this);
  auto* lLabel = new QLabel(aFiles.isEmpty() ? tr("No firmware is available for this device.")
                                             : tr("Select the firmware to install on the device:"),
                            this);
  lLayout->addWidget(lLabel);
  mList = new QListWidget(this);
  for (const FirmwareFile& lFile : aFiles) {
    auto* lItem = new QListWidgetItem(lFile.mDescription, mList);
    lItem->setToolTip(lFile.mFile);
  }
  mList->setMinimumWidth(420);
  lLayout->addWidget(mList);
  auto* lButtons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  mOk = lButtons->addButton(tr("Update"), QDialogButtonBox::AcceptRole);
  lLayout->addWidget(lButtons);
  connect(lButtons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(lButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(mList, &QListWidget::currentRowChanged, this, &PxUpdateSelectDialog::LWFilesCurrentRowChanged);
  connect(mList, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
  // The newest file is offered first by convention; preselect it so Enter installs it.
  mList->setCurrentRow(aFiles.isEmpty() ? -1 : 0);
  LWFilesCurrentRowChanged(mList->currentRow());
}

QString PxUpdateSelectDialog::SelectedFile() const
{
  const int lRow = mList->currentRow();
  return lRow >= 0 && lRow < mFiles.size() ? mFiles.at(lRow).mFile : QString();
}

unsigned char PxUpdateSelectDialog::SelectedKind() const
{
  const int lRow = mList->currentRow();
  return lRow >= 0 && lRow < mFiles.size() ? mFiles.at(lRow).mKind : 0;
}

void PxUpdateSelectDialog::LWFilesCurrentRowChanged(int aRow)
{
  mOk->setEnabled(aRow >= 0);
}
