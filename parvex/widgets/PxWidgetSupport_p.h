#pragma once

#include "PtErrorLogForm.h"
#include "PtMessageBox.h"

#include <QWidget>

#include <exception>

namespace PxWidgetSupport {
// A value the property refused (out of its limits, not a number). The edit came from the user, so
// it is logged and shown over the window they typed in; the widget then shows the property again.
inline void ReportRefusedEdit(QWidget* aWidget, const std::exception& aError)
{
  PtErrorLogForm::LogError(aError);
  PtMessageBox::ShowError(aWidget ? aWidget->window() : nullptr, aError);
}

// An all-ones editable word: the value may be edited.
constexpr unsigned int EDITABLE_WORD = 0xFFFFFFFFu;
} // namespace PxWidgetSupport
