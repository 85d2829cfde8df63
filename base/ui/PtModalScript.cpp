#include "PtModalScript.h"

#include "PtAssert.h"

#include <cstdio>

namespace {
PtModalScript* sActive = nullptr;

bool Fits(PtModalScript::Kind aKind, PtModalScript::Answer::Type aType)
{
  using A = PtModalScript::Answer;
  if (aType == A::A_CANCEL) {
    return true;
  }
  switch (aKind) {
  case PtModalScript::K_QUESTION:
    return aType == A::A_BUTTON;
  case PtModalScript::K_TEXT_PROMPT:
    return aType == A::A_TEXT || aType == A::A_ACTION;
  case PtModalScript::K_OPEN_FILE:
  case PtModalScript::K_SAVE_FILE:
  case PtModalScript::K_DIRECTORY:
    return aType == A::A_TEXT;
  case PtModalScript::K_RADIO_PROMPT:
    return aType == A::A_VALUE || aType == A::A_ACTION;
  case PtModalScript::K_DIALOG:
    return aType == A::A_ACTION;
  default:
    return false;
  }
}

QString TypeName(PtModalScript::Answer::Type aType)
{
  switch (aType) {
  case PtModalScript::Answer::A_BUTTON:
    return QStringLiteral("button");
  case PtModalScript::Answer::A_TEXT:
    return QStringLiteral("text");
  case PtModalScript::Answer::A_VALUE:
    return QStringLiteral("value");
  case PtModalScript::Answer::A_ACTION:
    return QStringLiteral("action");
  default:
    return QStringLiteral("cancel");
  }
}
} // namespace

PtModalScript::PtModalScript()
{
  // Two scripts at once would split one sequence of answers between them.
  PT_ASSERT(sActive == nullptr);
  sActive = this;
}

PtModalScript::~PtModalScript()
{
  sActive = nullptr;
}

void PtModalScript::Queue(int aStandardButton)
{
  Answer lAnswer;
  lAnswer.mType = Answer::A_BUTTON;
  lAnswer.mButton = aStandardButton;
  mAnswers.append(lAnswer);
}

void PtModalScript::Queue(const QString& aText)
{
  Answer lAnswer;
  lAnswer.mType = Answer::A_TEXT;
  lAnswer.mText = aText;
  mAnswers.append(lAnswer);
}

void PtModalScript::QueueValue(int aValue)
{
  Answer lAnswer;
  lAnswer.mType = Answer::A_VALUE;
  lAnswer.mValue = aValue;
  mAnswers.append(lAnswer);
}

void PtModalScript::Queue(const Action& aAction)
{
  Answer lAnswer;
  lAnswer.mType = Answer::A_ACTION;
  lAnswer.mAction = aAction;
  mAnswers.append(lAnswer);
}

void PtModalScript::QueueCancel()
{
  mAnswers.append(Answer());
}

bool PtModalScript::IsActive()
{
  return sActive != nullptr;
}

bool PtModalScript::Intercept(const Interaction& aInteraction, Answer* aAnswer)
{
  if (!sActive) {
    return false;
  }
  sActive->mInteractions.append(aInteraction);
  *aAnswer = Answer();
  const bool lOnlyOk =
      aInteraction.mKind == K_ERROR || aInteraction.mKind == K_WARNING || aInteraction.mKind == K_INFORMATION;
  if (lOnlyOk || sActive->mAnswers.isEmpty()) {
    return true;
  }
  *aAnswer = sActive->mAnswers.takeFirst();
  if (!Fits(aInteraction.mKind, aAnswer->mType)) {
    std::fprintf(stderr, "PtModalScript: a queued %s answer cannot answer the %s \"%s\"\n",
                 qPrintable(TypeName(aAnswer->mType)), qPrintable(KindName(aInteraction.mKind)),
                 qPrintable(aInteraction.mText));
    PT_ASSERT(!"queued answer does not fit the interaction");
  }
  return true;
}

QString PtModalScript::KindName(Kind aKind)
{
  switch (aKind) {
  case K_ERROR:
    return QStringLiteral("error box");
  case K_WARNING:
    return QStringLiteral("warning box");
  case K_INFORMATION:
    return QStringLiteral("information box");
  case K_QUESTION:
    return QStringLiteral("question");
  case K_TEXT_PROMPT:
    return QStringLiteral("text prompt");
  case K_RADIO_PROMPT:
    return QStringLiteral("radio prompt");
  case K_OPEN_FILE:
    return QStringLiteral("open-file chooser");
  case K_SAVE_FILE:
    return QStringLiteral("save-file chooser");
  case K_DIRECTORY:
    return QStringLiteral("directory chooser");
  case K_DIALOG:
    return QStringLiteral("dialog");
  }
  return QString();
}
