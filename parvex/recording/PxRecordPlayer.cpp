#include "PxRecordPlayer.h"

#include "PtAssert.h"
#include "PtException.h"
#include "PtFile.h"
#include "PxRecorder.h"
#include "PxResult.h"
#include "PxResultEchoes.h"
#include "PxResultState.h"
#include "PxResultTrace.h"
#include "PxSensor.h"

#include <algorithm>

namespace {
// Header sections of older recorders that hold properties too.
constexpr PtU32 SECTION_PROPERTIES_OLD = 0x1000;
constexpr PtU32 SECTION_CALIBRATION = 0x20;
constexpr PtU32 SECTION_USER_CALIBRATION = 0x120;

constexpr int ERROR_NO_HEADER = 6;
constexpr int ERROR_NOT_A_FRAME = 7;
constexpr int ERROR_UNKNOWN_HEADER_SECTION = 9;

std::vector<PxRecordPlayer::Types>& Registry()
{
  // Filled by the drivers at start-up, possibly from their own static initialisation.
  static std::vector<PxRecordPlayer::Types> sTypes;
  return sTypes;
}

// The provider that reads a result section of a frame; 0 for sections the player skips.
PtU32 ProviderOfSection(PtU32 aSectionId)
{
  switch (aSectionId) {
  case PxResultTrace::SECTION_16:
    return PxResultProvider::ID_TRACES;
  case PxResultTrace::SECTION_32:
    return PxResultProvider::ID_TRACES_32;
  case PxResultEchoes::SECTION_ID:
    return PxResultProvider::ID_ECHOES;
  case PxResultState::SECTION_ID:
    return PxResultProvider::ID_STATE;
  default:
    return 0;
  }
}

PxSensor* Checked(PxSensor* aSensor)
{
  PT_ASSERT(aSensor != nullptr);
  return aSensor;
}
} // namespace

void PxRecordPlayer::RegisterType(unsigned int aFirstWord, unsigned int aSecondWord, Factory aFactory)
{
  PT_ASSERT(aFactory != nullptr);
  Registry().push_back({aFirstWord, aSecondWord, aFactory});
}

const std::vector<PxRecordPlayer::Types>& PxRecordPlayer::RegisteredTypes()
{
  return Registry();
}

PxRecordPlayer* PxRecordPlayer::CreateFromFile(const QString& aFileName)
{
  PtFile lFile(aFileName);
  lFile.OpenOrThrow(QIODevice::ReadOnly);
  PtU32 lWords[2] = {0, 0};
  lFile.Read(&lWords[0], 4);
  lFile.Read(&lWords[1], 4);
  lFile.close();
  for (const Types& lType : Registry()) {
    if (lType.mFirstWord == lWords[0] && lType.mSecondWord == lWords[1]) {
      return lType.mFactory(aFileName);
    }
  }
  return nullptr;
}

PxRecordPlayer::PxRecordPlayer(const QString& aFileName, PxSensor* aSensor)
    : mOwnedSensor(Checked(aSensor))
    , mSensor(aSensor)
    , mFileName(aFileName)
    , mReader(aFileName, aSensor->RecordDocumentType())
{
  if (!mReader.Advance() || !mReader.IsSection() || mReader.Id() != PxRecorder::SECTION_HEADER) {
    PtFileFormatError(ERROR_NO_HEADER);
  }
  mState = qobject_cast<PxResultState*>(mSensor->GetProvider(PxResultProvider::ID_STATE));
}

PxRecordPlayer::~PxRecordPlayer() = default;

PxSensor* PxRecordPlayer::TakeSensor()
{
  return mOwnedSensor.release();
}

PxDeviceUi* PxRecordPlayer::CreateDeviceUi(PxSensor*)
{
  return nullptr;
}

bool PxRecordPlayer::IsCut() const
{
  // The writer's own word, not the missing closing frame: an extract of a cut file is finished
  // by its writer, but has no closing frame to copy.
  return mStarted && !mReader.WasClosed();
}

void PxRecordPlayer::Start()
{
  PT_ASSERT(!mStarted);
  while (mReader.Advance()) {
    if (!mReader.IsSection()) {
      continue;
    }
    switch (mReader.Id()) {
    case PxRecorder::SECTION_PROPERTIES:
    case SECTION_PROPERTIES_OLD:
      mSensor->LoadProperties(mReader);
      // What follows a loaded configuration: limits, units and editability in line with it.
      mSensor->WriteConfiguration();
      mSensor->ApplyConfiguration();
      break;
    case SECTION_CALIBRATION:
    case SECTION_USER_CALIBRATION:
      mSensor->LoadProperties(mReader);
      break;
    case PxRecorder::SECTION_FRAME:
      // A recording stopped before its first frame closes with its empty frame still inside the
      // header. It holds no frames, but it is a record all the same.
      mReader.SkipCurrentSection();
      break;
    default:
      PtFileFormatError(ERROR_UNKNOWN_HEADER_SECTION);
    }
  }
  mReader.BuildMainSectionList();
  mSectionCount = mReader.MainSectionCount();
  // A finished file ends with an empty frame; a file whose writer was killed ends with its last
  // complete frame, which must replay like the others.
  mTrailingSections = 0;
  if (mSectionCount > 1) {
    mReader.MoveTo(mSectionCount - 1);
    mReader.Advance();
    if (mReader.IsSection() && mReader.Id() == PxRecorder::SECTION_FRAME && !mReader.Advance()) {
      mTrailingSections = 1;
    }
    mReader.MoveTo(1);
  }
  mStarted = true;
}

size_t PxRecordPlayer::FrameCount() const
{
  return mSectionCount > 1 + mTrailingSections ? mSectionCount - 1 - mTrailingSections : 0;
}

size_t PxRecordPlayer::CurrentSection() const
{
  const size_t lSection = mReader.CurrentMainSection();
  return lSection == PT_ALL ? 0 : lSection;
}

bool PxRecordPlayer::ReadNext()
{
  // Frame k is main section k, so the last frame has been read when the current main section is
  // the number of frames.
  if (!mStarted || CurrentSection() >= FrameCount()) {
    return false;
  }
  if (!mReader.Advance() || !mReader.IsSection() || mReader.Id() != PxRecorder::SECTION_FRAME) {
    PtFileFormatError(ERROR_NOT_A_FRAME);
  }
  ReplayFrame();
  return true;
}

void PxRecordPlayer::ReplayFrame()
{
  while (mReader.Advance()) {
    if (!mReader.IsSection()) {
      continue;
    }
    const PtU32 lProvider = ProviderOfSection(mReader.Id());
    PxResultProvider* lTarget = lProvider != 0 ? mSensor->GetProvider(lProvider) : nullptr;
    if (lTarget) {
      lTarget->Load(mReader);
    } else {
      mReader.SkipCurrentSection();
    }
  }
}

bool PxRecordPlayer::ReadPrevious()
{
  if (CurrentSection() < 2) {
    return false;
  }
  return MoveTo(CurrentIndex() - 1);
}

bool PxRecordPlayer::MoveTo(unsigned long aIndex)
{
  if (!mStarted || aIndex > FrameCount()) {
    return false;
  }
  const size_t lTarget = aIndex;
  if (CurrentSection() != lTarget) {
    // Positioned just before main section lStart, the reader stands on frame lStart - 1 as if it
    // had just been read: starting at 1 rewinds to the header.
    size_t lStart = std::max<size_t>(lTarget, 1);
    if (mIndexed) {
      while (lStart > 1 && !mReader.IsIndexSection(lStart)) {
        --lStart;
      }
    }
    mReader.MoveTo(lStart);
  }
  while (CurrentSection() != lTarget) {
    if (!ReadNext()) {
      return false;
    }
  }
  return true;
}

unsigned long PxRecordPlayer::CurrentIndex() const
{
  return static_cast<unsigned long>(CurrentSection());
}

unsigned long PxRecordPlayer::RecordSize() const
{
  return static_cast<unsigned long>(FrameCount());
}

QDateTime PxRecordPlayer::FullTimestamp() const
{
  return mState ? mState->FrameTime() : QDateTime();
}

unsigned int PxRecordPlayer::RelativeTimestamp() const
{
  return mState ? mState->TimestampResult()->IntValue(0) : 0;
}

bool PxRecordPlayer::Extract(unsigned long aFirst, unsigned long aLast, const QString& aFileName)
{
  if (!mStarted || aFirst < 1 || aFirst > aLast || aLast > FrameCount()) {
    return false;
  }
  // The header (main section 0) leads; frame k is main section k.
  return mReader.Extract(1, aFirst, aLast, aFileName);
}

bool PxRecordPlayer::Extract(const QString& aSource, unsigned long aFirst, unsigned long aLast,
                             const QString& aFileName)
{
  if (aFirst < 1 || aFirst > aLast) {
    return false;
  }
  PtDocumentReader lReader(aSource);
  return lReader.Extract(1, aFirst, aLast, aFileName);
}
