#include "PxSimDevice.h"

#include "PxSimError.h"
#include "PxSimLog.h"
#include "PxSimRequest.h"

#include <QDir>

#include <cstring>

using namespace PxSimProtocol;

Q_LOGGING_CATEGORY(lcSim, "parvex.sim")

namespace {
QString StateFile(const QString& aDir, const char* aName)
{
  return aDir.isEmpty() ? QString() : QDir(aDir).filePath(QString::fromLatin1(aName));
}
} // namespace

PxSimDevice::PxSimDevice(const QString& aStateDir)
    : mConfiguration(StateFile(aStateDir, "nvm.bin"))
    , mGroups(mConfiguration)
    , mFirmware(mConfiguration, StateFile(aStateDir, "software.bin"))
    , mMemories(mConfiguration, mGroups, mFirmware)
{
  if (!aStateDir.isEmpty()) {
    QDir().mkpath(aStateDir);
  }
  mWriter.SetProtocolId(2);
}

qint64 PxSimDevice::MessageLength(const char* aData, qint64 aSize)
{
  if (aSize < PxProtocolWriter::REQUEST_HEADER_SIZE) {
    return 0;
  }
  PtU16 lProtocol;
  PtU32 lSize;
  std::memcpy(&lProtocol, aData, 2);
  std::memcpy(&lSize, aData + 4, 4);
  if (lProtocol != 2 || lSize < PxProtocolWriter::REQUEST_HEADER_SIZE ||
      lSize - PxProtocolWriter::REQUEST_HEADER_SIZE > PxProtocolReader::DEFAULT_MAX_PAYLOAD) {
    return -1;
  }
  return aSize < lSize ? 0 : static_cast<qint64>(lSize);
}

void PxSimDevice::Restart(bool aFactory)
{
  mConfiguration.Restart(aFactory);
  mFirmware.Abort();
  mGroups.Restart();
  mMemories.Restart();
  qCInfo(lcSim) << (aFactory ? "restart with factory defaults" : "restart");
}

PxSimReply PxSimDevice::Handle(const QByteArray& aMessage)
{
  PxSimReply lReply;
  PxProtocolReader& lReader = mSource.Reader();
  mSource.SetMessage(aMessage);
  try {
    lReader.ReadRequestHeader();
    lReader.ReadPayload();
  } catch (const std::exception& e) {
    // Without a trustworthy header there is no telling where the next request starts.
    qCWarning(lcSim) << "unreadable request, dropping the link:" << e.what();
    lReply.mDropLink = true;
    return lReply;
  }
  ++mRequestCount;
  const PtU16 lCode = lReader.RequestCode();
  // The fault switch itself is never hit, so a test can always clear what it armed.
  const PxSimFaultInjector::Hit lHit = lCode == REQ_DEBUG_FAULT ? PxSimFaultInjector::Hit() : mFaults.Next(lCode);
  if (lHit.mFault == FAULT_DROP_LINK) {
    qCInfo(lcSim) << "injected fault: dropping the link on request" << lCode;
    lReply.mDropLink = true;
    return lReply;
  }

  mWriter.StartAnswer(lCode);
  PtU16 lAnswerCode = ANSWER_OK;
  PtU16 lBadElement = 0;
  if (lHit.mFault == FAULT_ERROR_ANSWER) {
    lAnswerCode = lHit.mParameter ? static_cast<PtU16>(lHit.mParameter) : PtU16(ANSWER_INTERNAL);
  } else {
    try {
      PxSimRequest lRequest(lReader);
      Dispatch(lCode, lRequest);
    } catch (const PxSimError& e) {
      lAnswerCode = e.mCode;
      lBadElement = e.mElement;
    } catch (const PxProtocolReader::Exception& e) {
      // Elements that overrun the payload: the header was fine, so the stream still is.
      lAnswerCode = ANSWER_BAD_ELEMENT;
    } catch (const std::exception& e) {
      qCWarning(lcSim) << "request" << lCode << "failed:" << e.what();
      lAnswerCode = ANSWER_INTERNAL;
    }
  }
  if (lAnswerCode != ANSWER_OK) {
    // An error answer carries no half-done results, only the element to blame.
    mWriter.StartAnswer(lCode);
    if (lBadElement != 0) {
      mWriter.AddElement(ID_ERROR_ELEMENT, 1, 2, &lBadElement, 2);
    }
  }
  mWriter.CloseAnswer(lAnswerCode);
  mGroups.SetUpdating(mFirmware.Updating());
  lReply.mBytes = QByteArray(reinterpret_cast<const char*>(mWriter.Data()), static_cast<int>(mWriter.Size()));

  if (lHit.mFault == FAULT_LATE_ANSWER) {
    lReply.mDelayMs = static_cast<int>(lHit.mParameter ? lHit.mParameter : DEFAULT_LATE_MS);
    qCInfo(lcSim) << "injected fault: answering request" << lCode << lReply.mDelayMs << "ms late";
  } else if (lHit.mFault == FAULT_CORRUPT_HEADER) {
    const PtU16 lWrong = CORRUPT_PROTOCOL_ID;
    std::memcpy(lReply.mBytes.data(), &lWrong, 2);
    qCInfo(lcSim) << "injected fault: corrupt header on request" << lCode;
  }
  return lReply;
}

void PxSimDevice::Dispatch(PtU16 aRequest, PxSimRequest& aElements)
{
  switch (aRequest) {
  case REQ_IDENTITY:
    aElements.CheckOnly({});
    mConfiguration.WriteIdentity(mWriter);
    break;
  case REQ_READ_CONFIG:
    mConfiguration.WriteConfiguration(aElements, mWriter);
    break;
  case REQ_WRITE_CONFIG:
    if (mFirmware.Updating()) {
      throw PxSimError{ANSWER_BUSY, 0};
    }
    mConfiguration.Apply(aElements);
    break;
  case REQ_SAVE_CONFIG:
    aElements.CheckOnly({});
    if (mFirmware.Updating()) {
      throw PxSimError{ANSWER_BUSY, 0};
    }
    mConfiguration.Save();
    break;
  case REQ_RESET: {
    aElements.CheckOnly({ID_RESET_KIND});
    const PtByte lKind = aElements.Scalar<PtByte>(ID_RESET_KIND, RESET_RESTART);
    if (lKind != RESET_RESTART && lKind != RESET_FACTORY) {
      throw PxSimError{ANSWER_OUT_OF_RANGE, ID_RESET_KIND};
    }
    Restart(lKind == RESET_FACTORY);
    break;
  }
  case REQ_STATE:
    aElements.CheckOnly({});
    mGroups.WriteState(mWriter);
    break;
  case REQ_ECHOES:
    aElements.CheckOnly({});
    mGroups.WriteEchoes(mWriter);
    break;
  case REQ_RAW_TRACES:
  case REQ_FILTERED_TRACES:
    aElements.CheckOnly({});
    mGroups.WriteTraces(mWriter, aRequest == REQ_FILTERED_TRACES);
    break;
  case REQ_DEBUG_FAULT:
    DebugFault(aElements);
    break;
  case REQ_DEBUG_SCENE:
    DebugScene(aElements);
    break;
  case REQ_READ_MEMORY:
    mMemories.Read(aElements, mWriter);
    break;
  case REQ_WRITE_MEMORY:
    mMemories.Write(aElements);
    break;
  case REQ_FIRMWARE_BEGIN:
    mFirmware.Begin(aElements, mWriter);
    break;
  case REQ_FIRMWARE_CHUNK:
    mFirmware.Chunk(aElements, mWriter);
    break;
  case REQ_FIRMWARE_END:
    mFirmware.End(aElements);
    // The new version runs only after a restart, as on the hardware.
    Restart(false);
    break;
  default:
    throw PxSimError{ANSWER_UNKNOWN_REQUEST, 0};
  }
}

void PxSimDevice::DebugFault(const PxSimRequest& aRequest)
{
  aRequest.CheckOnly({ID_DEBUG_P1, ID_DEBUG_P2, ID_DEBUG_P3, ID_DEBUG_P4});
  const PtU64 lRequest = aRequest.Scalar<PtU64>(ID_DEBUG_P1, 0);
  const PtU32 lParameter = aRequest.Scalar<PtU32>(ID_DEBUG_P2, 0);
  const PtByte lFault = aRequest.Scalar<PtByte>(ID_DEBUG_P3, FAULT_NONE);
  const PtU64 lCount = aRequest.Scalar<PtU64>(ID_DEBUG_P4, 0);
  if (lRequest > 0xFFFF) {
    throw PxSimError{ANSWER_OUT_OF_RANGE, ID_DEBUG_P1};
  }
  if (lFault > FAULT_LAST) {
    throw PxSimError{ANSWER_OUT_OF_RANGE, ID_DEBUG_P3};
  }
  mFaults.Arm(static_cast<Fault>(lFault), static_cast<PtU16>(lRequest), lParameter, lCount);
  qCInfo(lcSim) << "fault" << lFault << "armed for request" << lRequest << "parameter" << lParameter << "count"
                << lCount;
  const PtU64 lResult = lFault;
  mWriter.AddElement(ID_DEBUG_RESULT, 1, 8, &lResult, 8);
}

void PxSimDevice::DebugScene(const PxSimRequest& aRequest)
{
  aRequest.CheckOnly({ID_DEBUG_P1, ID_DEBUG_P2, ID_DEBUG_P3, ID_DEBUG_P4});
  const PtU64 lSeed = aRequest.Scalar<PtU64>(ID_DEBUG_P1, 0);
  const PtU32 lFlags = aRequest.Scalar<PtU32>(ID_DEBUG_P2, 0);
  if (lFlags & ~PtU32(SCENE_FREEZE_MOTION | SCENE_NO_NOISE)) {
    throw PxSimError{ANSWER_OUT_OF_RANGE, ID_DEBUG_P2};
  }
  mGroups.SetScene(lSeed, lFlags);
  const PtU64 lResult = mGroups.FrameCounter();
  mWriter.AddElement(ID_DEBUG_RESULT, 1, 8, &lResult, 8);
}
