#include "PxRecorder.h"

#include "PtAssert.h"
#include "PtDocumentWriter.h"
#include "PtErrorLogForm.h"
#include "PtException.h"
#include "PtMessageBox.h"
#include "PxRecordingFiles_p.h"
#include "PxResultEchoes.h"
#include "PxResultState.h"
#include "PxResultTrace.h"
#include "PxSensor.h"

#include <QApplication>
#include <QDir>
#include <QLoggingCategory>
#include <QPointer>
#include <QSettings>
#include <QThread>
#include <QTimer>

Q_LOGGING_CATEGORY(lcRecording, "parvex.recording")

namespace {
const QString GROUP = QStringLiteral("Recorder");
const QString KEY_FLAGS = QStringLiteral("Flags");
const QString KEY_FILE_SIZE = QStringLiteral("FileSize");
const QString KEY_DIRECTORY = QStringLiteral("Directory");
const QString KEY_MAX_TIME = QStringLiteral("MaxTime");
const QString DEFAULT_DIRECTORY = QStringLiteral("C:/Data");
// The size limit is kept in bytes in 32 bits: 4095 MB is the largest that fits.
constexpr unsigned int LARGEST_FILE_SIZE = 4095;

// A setting edited by hand (or by an older version) must not turn into a recorder that splits on
// every frame: out-of-range values fall back to the default.
unsigned int ReadUnsigned(const QSettings& aSettings, const QString& aKey, unsigned int aDefault, unsigned int aMin,
                          unsigned int aMax)
{
  if (!aSettings.contains(aKey)) {
    return aDefault;
  }
  bool lOk = false;
  const unsigned int lValue = aSettings.value(aKey).toUInt(&lOk);
  if (!lOk || lValue < aMin || lValue > aMax) {
    qCWarning(lcRecording) << "setting" << aSettings.group() << aKey << "=" << aSettings.value(aKey)
                           << "is not usable; taking" << aDefault;
    return aDefault;
  }
  return lValue;
}
} // namespace

unsigned int PxRecorder::sFlags = PxRecorder::DEFAULT_FLAGS;
unsigned int PxRecorder::sMaxFileSize = PxRecorder::DEFAULT_MAX_FILE_SIZE;
QString PxRecorder::sDirectory = DEFAULT_DIRECTORY;
unsigned int PxRecorder::sMaxTime = PxRecorder::DEFAULT_MAX_TIME;
QString PxRecorder::sFileName;

void PxRecorder::Initialize()
{
  QSettings lSettings;
  lSettings.beginGroup(GROUP);
  sFlags = ReadUnsigned(lSettings, KEY_FLAGS, DEFAULT_FLAGS, 0, ~0u);
  sMaxFileSize = ReadUnsigned(lSettings, KEY_FILE_SIZE, DEFAULT_MAX_FILE_SIZE, 1, LARGEST_FILE_SIZE);
  sMaxTime = ReadUnsigned(lSettings, KEY_MAX_TIME, DEFAULT_MAX_TIME, 0, ~0u);
  sDirectory = lSettings.value(KEY_DIRECTORY, DEFAULT_DIRECTORY).toString();
  if (sDirectory.isEmpty()) {
    sDirectory = DEFAULT_DIRECTORY;
  }
}

void PxRecorder::SetParameters(unsigned int aFlags, const QString& aDirectory, unsigned int aMaxFileSize,
                               unsigned int aMaxTime)
{
  sFlags = aFlags;
  sDirectory = aDirectory;
  sMaxFileSize = qBound(1u, aMaxFileSize, LARGEST_FILE_SIZE);
  sMaxTime = aMaxTime;
  QSettings lSettings;
  lSettings.beginGroup(GROUP);
  lSettings.setValue(KEY_FLAGS, sFlags);
  lSettings.setValue(KEY_DIRECTORY, sDirectory);
  lSettings.setValue(KEY_FILE_SIZE, sMaxFileSize);
  lSettings.setValue(KEY_MAX_TIME, sMaxTime);
}

void PxRecorder::SeedDefaultDirectories(const QString& aBase)
{
  QSettings lSettings;
  const QString lRecorder = GROUP + QLatin1Char('/') + KEY_DIRECTORY;
  const QString lLogger = QStringLiteral("DataLogger/Directory");
  if (!lSettings.contains(lRecorder)) {
    lSettings.setValue(lRecorder, aBase + QStringLiteral("/Recordings"));
  }
  if (!lSettings.contains(lLogger)) {
    lSettings.setValue(lLogger, aBase + QStringLiteral("/Logs"));
  }
}

unsigned int PxRecorder::Flags()
{
  return sFlags;
}

QString PxRecorder::Directory()
{
  return sDirectory;
}

unsigned int PxRecorder::MaxFileSize()
{
  return sMaxFileSize;
}

unsigned int PxRecorder::MaxTime()
{
  return sMaxTime;
}

void PxRecorder::FileName(QString& aFileName) const
{
  aFileName = sFileName;
}

unsigned int PxRecorder::ElapsedBetween(const QDateTime& aStart, const QDateTime& aNow)
{
  if (!aStart.isValid() || aStart.toMSecsSinceEpoch() < 1) {
    return 0;
  }
  return static_cast<unsigned int>(static_cast<PtU64>(aNow.toMSecsSinceEpoch() - aStart.toMSecsSinceEpoch()));
}

PxRecorder::PxRecorder(PxSensor* aSensor)
    : mSensor(aSensor)
{
  PT_ASSERT(aSensor != nullptr);
  mMaxFileSize = static_cast<PtU32>(sMaxFileSize) << 20;
  if (!QDir().mkpath(sDirectory)) {
    PtThrow<std::runtime_error>(0, tr("Failed to create recording directory."));
  }
  StartFile();

  PtU32 lMask = PxResultProvider::ID_STATE | PxResultProvider::ID_ECHOES;
  if (sFlags & CONTENT_RAW_TRACES) {
    lMask |= PxResultProvider::ID_TRACES;
    mRawTraces = static_cast<PxResultTrace*>(mSensor->GetProvider(PxResultProvider::ID_TRACES));
  }
  if ((sFlags & CONTENT_FILTERED_TRACES) && mSensor->DeliversFilteredTraces()) {
    mFilteredTraces = qobject_cast<PxResultTrace*>(mSensor->GetProvider(PxResultProvider::ID_TRACES_32));
    if (mFilteredTraces) {
      lMask |= PxResultProvider::ID_TRACES_32;
    }
  }
  mState = qobject_cast<PxResultState*>(mSensor->GetProvider(PxResultProvider::ID_STATE));
  mEchoes = qobject_cast<PxResultEchoes*>(mSensor->GetProvider(PxResultProvider::ID_ECHOES));
  PT_ASSERT(mState != nullptr && mEchoes != nullptr);

  // Direct: the frame is assembled in the order the providers publish, in their thread.
  connect(mState, &PxResultProvider::NewData, this, &PxRecorder::StateNewData, Qt::DirectConnection);
  connect(mEchoes, &PxResultProvider::NewData, this, &PxRecorder::EchoesNewData, Qt::DirectConnection);
  if (mRawTraces) {
    connect(mRawTraces, &PxResultProvider::NewData, this, &PxRecorder::RawTracesNewData, Qt::DirectConnection);
  }
  if (mFilteredTraces) {
    connect(mFilteredTraces, &PxResultProvider::NewData, this, &PxRecorder::FilteredTracesNewData,
            Qt::DirectConnection);
  }
  mSubscription.SetMask(lMask);
  mSensor->Subscribe(&mSubscription);
}

PxRecorder::~PxRecorder()
{
  // A fallback: the sensor closes its recorder before deleting it, while a derived recorder's
  // IsIndex still answers. Here the base's answer is used.
  try {
    Close();
  } catch (const std::exception& e) {
    PtErrorLogForm::LogError(e);
    qCWarning(lcRecording) << "closing the record file failed:" << e.what();
  }
}

bool PxRecorder::IsIndex() const
{
  return true;
}

void PxRecorder::CloseHeader()
{
  mHeaderClosed = true;
}

PtU64 PxRecorder::FileSize() const
{
  return mWriter ? mWriter->FileSize() : 0;
}

void PxRecorder::StartFile()
{
  if (mWriter) {
    mWriter->StartSection(SECTION_FRAME, 0, IsIndex());
    mWriter->EndLastSection();
  }
  QString lName = PxRecordingFiles::Name(sDirectory, *mSensor, QDateTime::currentDateTime(), QStringLiteral(".ptl"));
  // A split (or a new recording) within the millisecond of the previous file would reuse its name
  // and truncate it.
  while (lName == sFileName) {
    QThread::usleep(200);
    lName = PxRecordingFiles::Name(sDirectory, *mSensor, QDateTime::currentDateTime(), QStringLiteral(".ptl"));
  }
  sFileName = lName;
  mWriter.reset();
  mWriter = std::make_unique<PtDocumentWriter>(sFileName, mSensor->RecordDocumentType());
  qCDebug(lcRecording) << "recording into" << sFileName;

  const PtU32 lFlag = IsIndex() ? 1 : 0;
  mWriter->StartSection(SECTION_HEADER, 0, lFlag);
  mWriter->StartSection(SECTION_PROPERTIES, 0, lFlag);
  mSensor->SaveProperties(*mWriter);
  mWriter->EndSection();
  mHeaderClosed = false;
  mStopping = 0;
  mPendingWriters = 0;
}

void PxRecorder::BeginWriteFrame()
{
  if (mFileStart.isNull()) {
    mFileStart = QDateTime::currentDateTimeUtc();
  }
  if (mWriter->FileSize() >= mMaxFileSize) {
    StartFile();
  }
  if (!mHeaderClosed) {
    CloseHeader();
    if (mHeaderClosed) {
      mWriter->EndSection();
    }
  }
  mWriter->StartSection(SECTION_FRAME, 0, IsIndex() ? 1 : 0);
}

void PxRecorder::EndWriteFrame()
{
  if (mHeaderClosed) {
    mWriter->EndSection();
  }
  mFrameContent = 0;
}

void PxRecorder::StateNewData()
{
  mPublishingThread = QThread::currentThread();
  if (mStopping || !Writing()) {
    return;
  }
  try {
    if (mFrameContent == 0) {
      BeginWriteFrame();
    }
    mState->Save(*mWriter);
    EndWriteFrame();
  } catch (const std::exception& e) {
    Abandon(e);
  }
}

void PxRecorder::RawTracesNewData()
{
  TracesNewData(mRawTraces, CONTENT_RAW_TRACES);
}

void PxRecorder::FilteredTracesNewData()
{
  TracesNewData(mFilteredTraces, CONTENT_FILTERED_TRACES);
}

void PxRecorder::TracesNewData(PxResultTrace* aTraces, PtU32 aBit)
{
  mPublishingThread = QThread::currentThread();
  if (!Writing()) {
    return;
  }
  try {
    if (mFrameContent & aBit) {
      // The traces of the next cycle came before its state: that frame is over. This also
      // takes back a stop that was requested meanwhile, so the recording goes on.
      EndWriteFrame();
      mStopping = 0;
    } else if (mStopping) {
      mPendingWriters &= ~aBit;
      return;
    }
    if (mFrameContent == 0) {
      BeginWriteFrame();
    }
    aTraces->Save(*mWriter);
    mFrameContent |= aBit;
    mPendingWriters |= aBit;
  } catch (const std::exception& e) {
    Abandon(e);
  }
}

void PxRecorder::EchoesNewData()
{
  mPublishingThread = QThread::currentThread();
  if (!Writing()) {
    return;
  }
  try {
    if (mFrameContent & CONTENT_ECHOES) {
      EndWriteFrame();
    }
    // Unlike the traces, the echoes acknowledge a stop without taking it back.
    if (mStopping) {
      mPendingWriters &= ~CONTENT_ECHOES;
      return;
    }
    if (mFrameContent == 0) {
      BeginWriteFrame();
    }
    mEchoes->Save(*mWriter);
    mFrameContent |= CONTENT_ECHOES;
    mPendingWriters |= CONTENT_ECHOES;
  } catch (const std::exception& e) {
    Abandon(e);
  }
}

bool PxRecorder::PublishedOnThisThread() const
{
  return mPublishingThread.load() == QThread::currentThread();
}

void PxRecorder::Close()
{
  if (!mActive) {
    return;
  }
  // The waits give a publishing thread time to finish the frame it is writing. Results published
  // on this very thread cannot arrive while it sleeps, so then there is nothing to wait for.
  if (!mHeaderClosed && !PublishedOnThisThread()) {
    for (int i = 0; i < CLOSE_ROUNDS && !mHeaderClosed; ++i) {
      QThread::msleep(100);
    }
  }
  mSensor->Unsubscribe(&mSubscription);
  mActive = false;

  mStopping = 1;
  if (mPendingWriters != 0 && !PublishedOnThisThread()) {
    for (int i = 0; i < CLOSE_ROUNDS && mPendingWriters != 0; ++i) {
      QThread::msleep(100);
    }
  }
  disconnect(mState, nullptr, this, nullptr);
  disconnect(mEchoes, nullptr, this, nullptr);
  if (mRawTraces) {
    disconnect(mRawTraces, nullptr, this, nullptr);
  }
  if (mFilteredTraces) {
    disconnect(mFilteredTraces, nullptr, this, nullptr);
  }
  if (!Writing()) {
    return;
  }
  std::unique_ptr<PtDocumentWriter> lWriter = std::move(mWriter);
  try {
    lWriter->StartSection(SECTION_FRAME, 0, IsIndex() ? 1 : 0);
    lWriter->EndLastSection();
  } catch (const std::exception&) {
    mWriteFailed = true;
    throw;
  }
  qCDebug(lcRecording) << "recording closed:" << sFileName;
}

unsigned int PxRecorder::ElapsedTime() const
{
  return ElapsedBetween(mFileStart, QDateTime::currentDateTimeUtc());
}

void PxRecorder::Abandon(const std::exception& aError)
{
  mWriteFailed = true;
  mActive = false;
  mSensor->Unsubscribe(&mSubscription);
  // What the writer still holds is lost; the file reads as cut after the last frame on disk.
  mWriter.reset();
  qCWarning(lcRecording) << "recording stopped:" << aError.what();
  PtErrorLogForm::LogError(aError);
  const QString lText = tr("Recording stopped: the record file could not be written. The frames recorded "
                           "until then are kept.\n%1")
                            .arg(PtMessageBox::ExceptionText(aError));
  emit Failed(lText);
  // Not from inside the provider's signal: the sensor drops this recorder and the user is told
  // once the frame being published is done.
  PxSensor* lSensor = mSensor;
  QPointer<PxRecorder> lSelf(this);
  QTimer::singleShot(0, lSensor, [lSensor, lSelf, lText] {
    if (lSelf && lSensor->Recorder() == lSelf) {
      lSensor->StopRecorder();
    }
    PtMessageBox::ShowError(QApplication::activeWindow(), lText);
  });
}
