#pragma once

#include "ParvexExport.h"
#include "PtTypes.h"
#include "PxResultSubscription.h"

#include <QDateTime>
#include <QObject>
#include <QString>

#include <atomic>
#include <exception>
#include <memory>

class PtDocumentWriter;
class PxResultEchoes;
class PxResultState;
class PxResultTrace;
class PxSensor;

// Writes a sensor's live results into record files (*.ptl) that PxRecordPlayer replays: a header
// with the sensor's properties, then one frame per measurement cycle holding what the providers
// published in that cycle. A long recording is split into several files at the size limit, only
// ever between two frames. The sensor makes the recorder to start recording and deletes it (after
// Close) to stop.
//
// A file that cannot be written (full disk, removed medium) stops the recording: the frames
// written so far stay replayable, the error goes to the error log and is shown to the user, and
// the sensor drops the recorder on the next turn of the event loop.
class PX_EXPORT PxRecorder : public QObject
{
  Q_OBJECT

public:
  enum : PtU32 { SECTION_HEADER = 0x1100, SECTION_PROPERTIES = 0x1101, SECTION_FRAME = 0x15A0 };
  // Bits of the frame content and of the recording flags.
  enum : PtU32 { CONTENT_RAW_TRACES = 4, CONTENT_FILTERED_TRACES = 8, CONTENT_ECHOES = 16 };
  static constexpr unsigned int DEFAULT_FLAGS = 33;
  static constexpr unsigned int DEFAULT_MAX_FILE_SIZE = 500; // megabytes
  static constexpr unsigned int DEFAULT_MAX_TIME = 60;       // minutes
  // Close waits this many rounds of 100 ms for the header and again for the writers.
  static constexpr int CLOSE_ROUNDS = 20;

  // Reads the persisted parameters (settings group "Recorder"). Called once at start-up.
  static void Initialize();
  // Sets the parameters and writes them to the settings at once (the preference page).
  static void SetParameters(unsigned int aFlags, const QString& aDirectory, unsigned int aMaxFileSize,
                            unsigned int aMaxTime);
  // For the host's first start: points the recording and the logging directory below aBase
  // ("Recordings" and "Logs") unless the user's settings already name them. Call before
  // Initialize().
  static void SeedDefaultDirectories(const QString& aBase);

  static unsigned int Flags();
  static QString Directory();
  static unsigned int MaxFileSize(); // megabytes
  static unsigned int MaxTime();     // minutes
  // The file being written (the last one started by any recorder).
  void FileName(QString& aFileName) const;

  // Milliseconds from aStart to aNow, truncated to 32 bits (wraps after about 49.7 days); 0 when
  // aStart is not set.
  static unsigned int ElapsedBetween(const QDateTime& aStart, const QDateTime& aNow);

  // Creates the recording directory and the first file and subscribes to the sensor's results.
  // Throws when the directory or the file cannot be created; nothing is recorded then.
  explicit PxRecorder(PxSensor* aSensor);
  // Closes the file if Close has not run (errors are logged, not thrown).
  ~PxRecorder() override;

  // Frames are index sections: the player may start replaying at any of them.
  virtual bool IsIndex() const;
  // Called once, when the first frame begins; a sensor type's recorder may write more header
  // elements first.
  virtual void CloseHeader();

  void StartFile();
  void BeginWriteFrame();
  void EndWriteFrame();
  // Finishes the recording: waits for the header and for results still being written, then
  // closes the file with the empty closing frame. Throws when the file cannot be written.
  void Close();
  // Milliseconds since the first frame, 0 before it.
  unsigned int ElapsedTime() const;

  bool Active() const { return mActive; }
  // Set when a file could not be written and the recording stopped.
  bool WriteFailed() const { return mWriteFailed; }
  // Bytes of the current file so far (for the status display).
  PtU64 FileSize() const;

public Q_SLOTS:
  void StateNewData();
  void RawTracesNewData();
  void FilteredTracesNewData();
  void EchoesNewData();

Q_SIGNALS:
  // The recording stopped because a file could not be written; aText says why, for the user.
  void Failed(const QString& aText);

protected:
  PtDocumentWriter* Writer() const { return mWriter.get(); }
  PxSensor* Sensor() const { return mSensor; }
  bool HeaderClosed() const { return mHeaderClosed.load(); }

private:
  // One result slot's trace frame pattern (bit 4 or 8).
  void TracesNewData(PxResultTrace* aTraces, PtU32 aBit);
  // Stops after a write error: the file keeps every frame written before it.
  void Abandon(const std::exception& aError);
  bool Writing() const { return mWriter != nullptr && !mWriteFailed; }
  // Results may be published from another thread than the one that closes: Close only waits
  // when that can change anything.
  bool PublishedOnThisThread() const;

  PxSensor* mSensor = nullptr;
  bool mActive = true;
  PxResultState* mState = nullptr;
  PxResultTrace* mRawTraces = nullptr;
  PxResultTrace* mFilteredTraces = nullptr;
  PxResultEchoes* mEchoes = nullptr;
  PxResultSubscription mSubscription;
  std::unique_ptr<PtDocumentWriter> mWriter;
  PtU32 mMaxFileSize = 0;
  QDateTime mFileStart;
  std::atomic<bool> mHeaderClosed{false};
  PtU32 mFrameContent = 0;
  std::atomic<PtU32> mStopping{0};
  std::atomic<PtU32> mPendingWriters{0};
  std::atomic<void*> mPublishingThread{nullptr};
  bool mWriteFailed = false;

  static unsigned int sFlags;
  static unsigned int sMaxFileSize;
  static QString sDirectory;
  static unsigned int sMaxTime;
  static QString sFileName;
};
