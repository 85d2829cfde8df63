// Renders the kit's windows to PNG files in the build folder, so that a person can look at them.
#include "PtErrorLogForm.h"
#include "PtException.h"
#include "PtMessageBox.h"
#include "PtModalScript.h"
#include "PtRadioPrompt.h"
#include "PtTextPrompt.h"
#include "PxTestGallery.h"

#include <QApplication>
#include <QDateTime>
#include <QTimer>

#include <gtest/gtest.h>

namespace {
void Save(QWidget* aWidget, const char* aName)
{
  EXPECT_TRUE(PxTest::SaveToGallery(aWidget, QLatin1String(aName))) << aName;
}

TEST(UiGallery, RendersEveryWindowOfTheKit)
{
  PtErrorLogForm::Clear();
  PtErrorLogForm::LogError(QStringLiteral("Cannot open serial port /dev/ttyUSB0: permission denied."));
  try {
    PtThrow<std::runtime_error>(1003, QStringLiteral("The answer to request 0x0112 came too late."));
  } catch (const std::exception& e) {
    PtErrorLogForm::LogError(e);
  }
  try {
    PtThrow<std::runtime_error>(17, QStringLiteral("The device refused the value.\nParameter: accumulation"));
  } catch (const std::exception& e) {
    PtErrorLogForm::LogError(e);
  }
  PtErrorLogForm* lForm = PtErrorLogForm::Open(nullptr);
  Save(lForm, "error_log_form");
  lForm->close();
  PtErrorLogForm::Clear();

  PtModalScript lScript;
  lScript.Queue([](QDialog* aDialog) { Save(aDialog, "radio_prompt"); });
  PtRadioPrompt lRadio(nullptr, QStringLiteral("Parvex Configuration"),
                       QStringLiteral("Please select the document you want to display:"));
  lRadio.AddItem(QStringLiteral("PX-16 User Guide"), 0);
  lRadio.AddItem(QStringLiteral("Parvex Configuration Software Guide"), 2);
  lRadio.exec();

  lScript.Queue([](QDialog* aDialog) { Save(aDialog, "text_prompt"); });
  QString lComment = QStringLiteral("mounted on the north gate");
  PtTextPrompt::Ask(nullptr, QStringLiteral("Enter comment"), QStringLiteral("Comment (optional):"), &lComment);
}
} // namespace
