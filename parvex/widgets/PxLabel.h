#pragma once

#include "ParvexExport.h"

#include <QLabel>

class PxProperty;
class PxResult;
class PxResultProvider;

// Read-only display of a property's first value, or of a result's first value refreshed with
// every frame of its provider (in the colour its colour conditions give).
class PX_EXPORT PxLabel : public QLabel
{
  Q_OBJECT

public:
  explicit PxLabel(QWidget* aParent = nullptr);

  void SetProperty(PxProperty* aProperty);
  void SetResult(PxResult* aResult, PxResultProvider* aProvider);

public Q_SLOTS:
  void PropertyValueChanged();
  void NewData();

private:
  PxProperty* mProperty = nullptr;
  PxResult* mResult = nullptr;
};
