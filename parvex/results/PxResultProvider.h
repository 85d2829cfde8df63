#pragma once

#include "ParvexExport.h"
#include "PtTypes.h"

#include <QObject>

#include <unordered_map>

class PtDocumentReader;
class PtDocumentWriter;
class PxProtocolReader;
class PxResult;

// Decodes one group of a sensor's measurement data (state, traces, echoes) from PtCom answers and
// record files, and announces every complete frame with NewData(). Its id is the group's bit in
// the sensor's data mask. The providers of a sensor share the sensor's two results maps, so that
// one frame of a record file or one answer reaches whichever provider's result it names.
class PX_EXPORT PxResultProvider : public QObject
{
  Q_OBJECT

public:
  using Map = std::unordered_map<PtU32, PxResult*>;

  // The group ids of the providers every sensor knows.
  enum : PtU32 { ID_STATE = 2, ID_TRACES = 4, ID_TRACES_32 = 8, ID_ECHOES = 16 };

  explicit PxResultProvider(PtU32 aId);

  PtU32 Id() const { return mId; }

  // Readers of the results wait for NewData(), which EndUpdate() emits once per frame.
  void StartUpdate();
  void EndUpdate();
  bool Updating() const { return mUpdating; }

  // The sensor hands its maps (not owned) to every provider it adds; a derived provider then
  // enters its own results in both, by id and by device id.
  virtual void SetMaps(Map* aResults, Map* aDeviceResults);
  // Reads one recorded frame of this provider; the reader stands on the provider's section.
  virtual void Load(PtDocumentReader& aReader) = 0;
  // Every result of the results map except the state timestamp (6673), which the state provider
  // writes in its own form.
  virtual void WriteElementsToFile(PtDocumentWriter& aWriter);
  // The result whose id is the element's reads it; unknown elements are ignored.
  virtual void ReadElementFromFile(PtDocumentReader& aReader);
  // The result whose device id is the element's reads it; unknown elements are ignored.
  virtual void ReadElementFromPtProtocol(PxProtocolReader& aReader);

  Map* Results() const { return mResults; }
  Map* DeviceResults() const { return mDeviceResults; }

Q_SIGNALS:
  void NewData();

protected:
  // Enters aResult in both maps (replacing results of the same keys). The maps must be set.
  void EnterResult(PxResult* aResult);

  // Ends an update that an exception interrupted, without announcing a frame that is not whole.
  class UpdateGuard
  {
  public:
    explicit UpdateGuard(PxResultProvider& aProvider)
        : mProvider(aProvider)
    {
      mProvider.StartUpdate();
    }
    ~UpdateGuard()
    {
      if (!mDone) {
        mProvider.mUpdating = false;
      }
    }
    void Finish()
    {
      mDone = true;
      mProvider.EndUpdate();
    }

  private:
    PxResultProvider& mProvider;
    bool mDone = false;
  };

private:
  static void CheckId(PtU32 aId);
  static void CheckMaps(Map* aResults, Map* aDeviceResults);

  Map* mResults = nullptr;
  Map* mDeviceResults = nullptr;
  PtU32 mId = 0;
  bool mUpdating = false;
};
