#include "PxDataLogger.h"

#include "PtAssert.h"
#include "PtException.h"
#include "PtFile.h"
#include "PxRecorder.h"
#include "PxRecordingFiles_p.h"
#include "PxResult.h"
#include "PxResultEchoes.h"
#include "PxResultState.h"
#include "PxSensor.h"

#include <QDir>
#include <QSettings>

namespace {
const QString GROUP = QStringLiteral("DataLogger");
const QString KEY_DIRECTORY = QStringLiteral("Directory");
const QString DEFAULT_DIRECTORY = QStringLiteral("C:/Data");
} // namespace

QString PxDataLogger::sDirectory = DEFAULT_DIRECTORY;

void PxDataLogger::Initialize()
{
  QSettings lSettings;
  lSettings.beginGroup(GROUP);
  sDirectory = lSettings.value(KEY_DIRECTORY, DEFAULT_DIRECTORY).toString();
  if (sDirectory.isEmpty()) {
    sDirectory = DEFAULT_DIRECTORY;
  }
}

void PxDataLogger::SetParameters(const QString& aDirectory)
{
  sDirectory = aDirectory;
  QSettings lSettings;
  lSettings.beginGroup(GROUP);
  lSettings.setValue(KEY_DIRECTORY, sDirectory);
}

QString PxDataLogger::Directory()
{
  return sDirectory;
}

PxDataLogger::PxDataLogger(PxSensor* aSensor)
    : mSensor(aSensor)
    , mSubscription(PxResultProvider::ID_STATE | PxResultProvider::ID_ECHOES)
{
  PT_ASSERT(aSensor != nullptr);
  if (!QDir().mkpath(sDirectory)) {
    PtThrow<std::runtime_error>(0, tr("Failed to create logging directory."));
  }
  mEchoes = qobject_cast<PxResultEchoes*>(mSensor->GetProvider(PxResultProvider::ID_ECHOES));
  mState = qobject_cast<PxResultState*>(mSensor->GetProvider(PxResultProvider::ID_STATE));
  PT_ASSERT(mEchoes != nullptr && mState != nullptr);

  mFile = std::make_unique<PtFile>(
      PxRecordingFiles::Name(sDirectory, *mSensor, QDateTime::currentDateTime(), QStringLiteral(".txt")));
  // Opened before anything is connected: a logger that throws here leaves no trace on the sensor.
  mFile->OpenOrThrow(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text);
  mStream.setDevice(mFile.get());

  connect(mEchoes, &PxResultProvider::NewData, this, &PxDataLogger::EchoesNewData, Qt::DirectConnection);
  connect(mState, &PxResultProvider::NewData, this, &PxDataLogger::StateNewData, Qt::DirectConnection);
  mStartTime = QDateTime::currentDateTimeUtc();
  mSensor->Subscribe(&mSubscription);
}

PxDataLogger::~PxDataLogger()
{
  mStream.flush();
}

unsigned int PxDataLogger::ElapsedTime() const
{
  return PxRecorder::ElapsedBetween(mStartTime, QDateTime::currentDateTimeUtc());
}

QString PxDataLogger::FileName() const
{
  return mFile->fileName();
}

void PxDataLogger::EchoesNewData()
{
  mPending = true;
}

void PxDataLogger::StateNewData()
{
  if (mPending) {
    mEchoes->Log(mStream, mState->TimestampResult()->IntValue(0));
    // Out at once, so that a log read while logging runs (or after a crash) is up to date.
    mStream.flush();
  }
  mPending = false;
}
