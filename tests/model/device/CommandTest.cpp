// Commands as buttons and devices see them: their signals report real changes only.
#include "PxCommand.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

TEST(Command, SignalsOnlyRealChanges)
{
  // A button re-reads the command on every signal; a signal without a change makes it flicker and
  // re-run whatever it binds, so each step tells whether a signal is due.
  PxCommand lCommand(7, 2);
  QSignalSpy lEnabled(&lCommand, &PxCommand::EnabledChanged);
  QSignalSpy lParameter(&lCommand, &PxCommand::ParameterChanged);

  struct Step
  {
    const char* mWhat;
    std::function<void()> mDo;
    int mEnabledSignals;
    int mParameterSignals;
  } const lSteps[] = {
      {"enable an enabled command", [&] { lCommand.SetEnabled(true); }, 0, 0},
      {"disable", [&] { lCommand.SetEnabled(false); }, 1, 0},
      {"unset parameter stays unset", [&] { lCommand.SetParameter(1, QVariant()); }, 0, 0},
      {"set parameter", [&] { lCommand.SetParameter(1, QVariant(42)); }, 0, 1},
      {"same value", [&] { lCommand.SetParameter(1, QVariant(42)); }, 0, 0},
      {"same number, other type", [&] { lCommand.SetParameter(1, QVariant(42u)); }, 0, 1},
      {"unset again", [&] { lCommand.SetParameter(1, QVariant()); }, 0, 1},
  };
  for (const Step& lStep : lSteps) {
    SCOPED_TRACE(lStep.mWhat);
    lEnabled.clear();
    lParameter.clear();
    lStep.mDo();
    EXPECT_EQ(lEnabled.count(), lStep.mEnabledSignals);
    ASSERT_EQ(lParameter.count(), lStep.mParameterSignals);
    if (lStep.mParameterSignals) {
      EXPECT_EQ(lParameter.at(0).at(0).value<size_t>(), 1u);
    }
  }
  EXPECT_FALSE(lCommand.Parameter(1).isValid());
  EXPECT_FALSE(lCommand.Parameter(0).isValid());
}
