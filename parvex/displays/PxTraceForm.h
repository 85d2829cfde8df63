#pragma once

#include "ParvexExport.h"
#include "PxDockWidget.h"

#include <QList>

class PxSensor;
class PxTraceWidget;
class QAction;
class QCheckBox;
class QHBoxLayout;
class QMenu;
class QMenuBar;
class QSignalMapper;
class QVBoxLayout;

// The "Trace Display" window: a trace graph with menus that drive it and a side panel of check
// boxes, hidden at start, that show or hide segments. The graph's own keys work alongside the
// menus while it has the focus; the menu texts name them.
class PX_EXPORT PxTraceForm : public PxDockWidget
{
  Q_OBJECT

public:
  explicit PxTraceForm(QWidget* aParent = nullptr);
  ~PxTraceForm() override;

  unsigned int PermanentId() const override { return 3; }
  void SetFlags(unsigned int aFlags) override;
  // Adds the per-segment entries and binds the graph; made once per sensor.
  void SetSensor(PxSensor* aSensor);

  PxTraceWidget* Graph() const { return mGraph; }
  QMenuBar* MenuBar() const { return mMenuBar; }
  QWidget* SegmentPanel() const { return mSegmentPanel; }
  const QList<QAction*>& SegmentActions() const { return mSegmentActions; }
  // Index 0 is "All", index s + 1 segment s.
  const QList<QCheckBox*>& SegmentBoxes() const { return mSegmentBoxes; }

public Q_SLOTS:
  void MIActionsSetOffsetsTriggered();
  void MIActionsResetOffsetsTriggered();
  void MIActionsAutoSetOffsetsTriggered();
  void MIActionsZoomAllTriggered();
  void MIActionsEnableAllTriggered();
  void MIActionsDisableAllTriggered();
  void MIActionsShowSegmentsPanelTriggered();
  void MISettingsIncreaseWidthTriggered();
  void MISettingsDecreaseWidthTriggered();
  void MISettingsIncreaseOffsetTriggered();
  void MISettingsDecreaseOffsetTriggered();
  void MISettingsMarkerNoneTriggered();
  void MISettingsMarkerXTriggered();
  void MISettingsMarkerCrossTriggered();
  void MISettingsMarkerSquareTriggered();
  void MISettingsMarkerCircleTriggered();
  void MISettingsReverseVideoTriggered();
  void MISettingsViewGridTriggered();
  void MIActionsZoomsTriggered(int aSegment);
  void MIActionsEnablesTriggered(int aSegment);
  void CBSegmentEnablesTriggered(int aIndex);

private:
  // The five marker entries act as one exclusive group.
  void SelectMarker(unsigned short aStyle);

  QWidget* mContent = nullptr;
  QVBoxLayout* mLayout = nullptr;
  QHBoxLayout* mGraphLayout = nullptr;
  PxTraceWidget* mGraph = nullptr;
  QMenuBar* mMenuBar = nullptr;
  QMenu* mZoomMenu = nullptr;
  QMenu* mShowMenu = nullptr;
  QAction* mMarkerActions[5] = {};
  QAction* mShowPanelAction = nullptr;
  QAction* mViewGridAction = nullptr;
  QWidget* mSegmentPanel = nullptr;
  QVBoxLayout* mSegmentLayout = nullptr;
  QSignalMapper* mZoomMapper = nullptr;
  QSignalMapper* mEnableMapper = nullptr;
  QSignalMapper* mBoxMapper = nullptr;
  QList<QAction*> mSegmentActions;
  QList<QCheckBox*> mSegmentBoxes;
  unsigned int mDisplayFlags = 0;
};
