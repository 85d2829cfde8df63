#pragma once

#include "ParvexExport.h"
#include "PtDocumentReader.h"

#include <QDateTime>
#include <QString>

#include <memory>
#include <vector>

class PxDeviceUi;
class PxResultState;
class PxSensor;

// Replays a record file: feeds its frames, one at a time, into a sensor without a connection,
// whose providers publish them exactly as live results. Sensor types register a factory for their
// files at start-up; CreateFromFile picks it by the file's two leading words.
//
// Frames are numbered from 1, the header standing at 0: CurrentIndex() is 0 until the first frame
// has been replayed, and MoveTo(RecordSize()) replays the last frame. Users, parvex-cli and the
// replay form all count this way. A recording that was cut (its writer was killed) replays every
// frame that reached the file.
class PX_EXPORT PxRecordPlayer
{
public:
  using Factory = PxRecordPlayer* (*)(const QString& aFileName);

  struct Types
  {
    unsigned int mFirstWord = 0;
    unsigned int mSecondWord = 0;
    Factory mFactory = nullptr;
  };

  // Appends a registry record; at lookup the first match wins.
  static void RegisterType(unsigned int aFirstWord, unsigned int aSecondWord, Factory aFactory);
  // The player of the first record whose words match the file's first two words; null when none
  // does. Throws when the file cannot be read.
  static PxRecordPlayer* CreateFromFile(const QString& aFileName);
  static const std::vector<Types>& RegisteredTypes();

  // Opens the file for aSensor's type and takes ownership of the sensor. Throws format error 6
  // when the file does not start with a header.
  PxRecordPlayer(const QString& aFileName, PxSensor* aSensor);
  virtual ~PxRecordPlayer();

  PxRecordPlayer(const PxRecordPlayer&) = delete;
  PxRecordPlayer& operator=(const PxRecordPlayer&) = delete;

  // Hands the sensor over to the caller, who then owns it.
  PxSensor* TakeSensor();
  // The UI a live sensor of this type gets on connection, made for aSensor (the sensor taken from
  // this player), which it then owns: the replay shows the same forms, menus and saved layout.
  // The device is not live, so the UI offers its views only. Null when the driver has none;
  // aSensor then stays the caller's.
  virtual PxDeviceUi* CreateDeviceUi(PxSensor* aSensor);
  PxSensor* Sensor() const { return mSensor; }
  const QString& FileName() const { return mFileName; }

  // Loads the header into the sensor and numbers the frames.
  void Start();
  // Replays the next frame; false after the last one.
  bool ReadNext();
  // Replays the frame before the current one; false, and nothing replayed, on the first.
  bool ReadPrevious();
  // Replays frame aIndex (1 to RecordSize()); 0 goes back before the first frame. False beyond
  // the last frame.
  bool MoveTo(unsigned long aIndex);
  // The frame last replayed, from 1; 0 before the first.
  unsigned long CurrentIndex() const;
  // Number of frames: the last one is frame RecordSize().
  unsigned long RecordSize() const;
  // Wall-clock time of the current frame, and its timestamp in the sensor's time base.
  QDateTime FullTimestamp() const;
  unsigned int RelativeTimestamp() const;
  // Writes the header and frames aFirst to aLast (from 1, both included) into a new record file.
  // False for a bad range.
  bool Extract(unsigned long aFirst, unsigned long aLast, const QString& aFileName);
  // The same from a reader of its own, so that a worker thread can copy a long range while the
  // player goes on replaying. The caller checks the range against RecordSize().
  static bool Extract(const QString& aSource, unsigned long aFirst, unsigned long aLast, const QString& aFileName);
  // Whether the file ends without its closing frame: its writer was killed, and every complete
  // frame before the cut replays.
  bool IsCut() const;

protected:
  // A player for files whose frames are not all self-contained: MoveTo then starts replaying at
  // the nearest index section before the target.
  void SetIndexed(bool aIndexed) { mIndexed = aIndexed; }

private:
  // The reader's current main section, 0 before the first. The header is main section 0, so
  // frame k is main section k.
  size_t CurrentSection() const;
  size_t FrameCount() const;
  // Publishes the sections of the frame the reader stands on through the sensor's providers.
  void ReplayFrame();

  // Owned before the reader opens the file, so that a file that does not open loses no sensor.
  std::unique_ptr<PxSensor> mOwnedSensor;
  PxSensor* mSensor = nullptr;
  QString mFileName;
  PtDocumentReader mReader;
  bool mIndexed = false;
  PxResultState* mState = nullptr;
  // Main sections after the last frame: the empty closing frame of a finished file; none when
  // the writer was killed before it.
  size_t mTrailingSections = 1;
  size_t mSectionCount = 0;
  bool mStarted = false;
};
