#include "PxConnectionDialog.h"

#include "PxConnection.h"
#include "PxConnectionWidget.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QVBoxLayout>

#include <algorithm>

namespace {
const char* const SETTINGS_GROUP = "ConnectionDialog";
const char* const TYPE_KEY = "Type";
} // namespace

PxConnectionDialog::PxConnectionDialog(QWidget* aParent)
    : PtDialog(aParent)
{
  mTypeLabel = new QLabel(tr("Select a connection type:"), this);
  mTypes = new QComboBox(this);
  mButtons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  mConnect = new QPushButton(tr("Connect"), this);
  mButtons->addButton(mConnect, QDialogButtonBox::AcceptRole);
  setWindowTitle(QStringLiteral("Connection"));

  mLayout = new QVBoxLayout;
  if (PxConnection::sTypes.size() > 1) {
    mLayout->addWidget(mTypeLabel);
    mLayout->addWidget(mTypes);
  } else {
    // With a single type there is nothing to choose.
    mTypeLabel->hide();
    mTypes->hide();
  }
  mLayout->addWidget(mButtons);
  setLayout(mLayout);

  connect(mTypes, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
          &PxConnectionDialog::CBTypesCurrentIndexChanged);
  connect(mConnect, &QPushButton::clicked, this, &PxConnectionDialog::PBConnectClicked);
  connect(mButtons, &QDialogButtonBox::rejected, this, &PxConnectionDialog::PBCancelClicked);

  // The first item inserted selects itself and so creates its widget.
  for (const PxConnection::Type& lType : PxConnection::sTypes) {
    mTypes->addItem(lType.mDescription);
  }
  QSettings lSettings;
  lSettings.beginGroup(QLatin1String(SETTINGS_GROUP));
  const int lStored = lSettings.value(QLatin1String(TYPE_KEY), 0).toInt();
  if (mTypes->count() > 0) {
    mTypes->setCurrentIndex(std::max(0, std::min(mTypes->count() - 1, lStored)));
  }
}

PxConnectionDialog::~PxConnectionDialog()
{
  delete mWidget;
}

PxDeviceUi* PxConnectionDialog::Ui() const
{
  return mWidget ? mWidget->Ui() : nullptr;
}

void PxConnectionDialog::CBTypesCurrentIndexChanged(int aIndex)
{
  if (aIndex < 0 || static_cast<size_t>(aIndex) >= PxConnection::sTypes.size()) {
    return;
  }
  if (mWidget) {
    mLayout->removeWidget(mWidget);
  }
  PxConnectionWidget* lWidget = PxConnection::sTypes[static_cast<size_t>(aIndex)].mWidgetCreator(this);
  // Whatever the user typed into the previous type's widget goes with it.
  delete mWidget;
  mWidget = lWidget;
  if (!mWidget) {
    return;
  }
  mLayout->insertWidget(mLayout->count() - 1, mWidget);
  mWidget->show();
  connect(mWidget, &PxConnectionWidget::ConnectionCompleted, this, &PxConnectionDialog::ConnectionCompleted);
  adjustSize();
}

void PxConnectionDialog::PBConnectClicked()
{
  if (mWidget) {
    mWidget->Connect();
  }
}

void PxConnectionDialog::PBCancelClicked()
{
  reject();
}

void PxConnectionDialog::ConnectionCompleted()
{
  QSettings lSettings;
  lSettings.beginGroup(QLatin1String(SETTINGS_GROUP));
  lSettings.setValue(QLatin1String(TYPE_KEY), mTypes->currentIndex());
  accept();
}
