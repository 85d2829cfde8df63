#pragma once

#include "ParvexExport.h"
#include "PtDialog.h"

class PxConnectionWidget;
class PxDeviceUi;
class QComboBox;
class QDialogButtonBox;
class QLabel;
class QPushButton;
class QVBoxLayout;

// "Connect...": the registered connection types to choose from and the chosen type's own widget,
// which does the connecting. The dialog closes once the widget reports a completed connection.
class PX_EXPORT PxConnectionDialog : public PtDialog
{
  Q_OBJECT

public:
  explicit PxConnectionDialog(QWidget* aParent);
  ~PxConnectionDialog() override;

  // The device UI the widget created, or null; taken over by the caller after exec().
  PxDeviceUi* Ui() const;
  PxConnectionWidget* CurrentWidget() const { return mWidget; }

private Q_SLOTS:
  void CBTypesCurrentIndexChanged(int aIndex);
  void PBConnectClicked();
  void PBCancelClicked();
  void ConnectionCompleted();

private:
  QLabel* mTypeLabel = nullptr;
  QComboBox* mTypes = nullptr;
  QDialogButtonBox* mButtons = nullptr;
  QPushButton* mConnect = nullptr;
  QVBoxLayout* mLayout = nullptr;
  PxConnectionWidget* mWidget = nullptr;
};
