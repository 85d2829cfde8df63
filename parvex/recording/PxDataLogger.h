#pragma once

#include "ParvexExport.h"
#include "PxResultSubscription.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QTextStream>

#include <memory>

class PtFile;
class PxResultEchoes;
class PxResultState;
class PxSensor;

// Writes a sensor's echoes as text, one line per echo, each stamped with the timestamp of the state
// that follows the echoes. Logs from construction to destruction; there is no pause.
class PX_EXPORT PxDataLogger : public QObject
{
  Q_OBJECT

public:
  // Reads the logging directory (settings group "DataLogger"). Called once at start-up.
  static void Initialize();
  // Sets the directory and writes it to the settings at once.
  static void SetParameters(const QString& aDirectory);
  static QString Directory();

  // Creates the directory and the file (truncating one of the same name) and starts logging.
  // Throws when either cannot be created.
  explicit PxDataLogger(PxSensor* aSensor);
  ~PxDataLogger() override;

  // Milliseconds since logging started, truncated to 32 bits; 0 before.
  unsigned int ElapsedTime() const;
  QString FileName() const;

public Q_SLOTS:
  void EchoesNewData();
  void StateNewData();

private:
  std::unique_ptr<PtFile> mFile;
  QTextStream mStream;
  PxSensor* mSensor = nullptr;
  PxResultState* mState = nullptr;
  PxResultEchoes* mEchoes = nullptr;
  PxResultSubscription mSubscription;
  QDateTime mStartTime;
  bool mPending = false;

  static QString sDirectory;
};
