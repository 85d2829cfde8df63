#include "PxTraceForm.h"

#include "PxSensor.h"
#include "PxTraceWidget.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QSignalMapper>
#include <QVBoxLayout>

namespace {
constexpr int PANEL_WIDTH = 80;
}

PxTraceForm::PxTraceForm(QWidget* aParent)
    : PxDockWidget(aParent)
    , mContent(new QWidget(this))
    , mLayout(new QVBoxLayout(mContent))
    , mGraphLayout(new QHBoxLayout)
    , mGraph(new PxTraceWidget)
    , mMenuBar(new QMenuBar(mContent))
    , mSegmentPanel(new QWidget(mContent))
    , mSegmentLayout(new QVBoxLayout(mSegmentPanel))
    , mZoomMapper(new QSignalMapper(this))
    , mEnableMapper(new QSignalMapper(this))
    , mBoxMapper(new QSignalMapper(this))
{
  mLayout->setContentsMargins(0, 0, 0, 0);
  mLayout->setMenuBar(mMenuBar);
  mLayout->addLayout(mGraphLayout);
  mGraphLayout->addWidget(mGraph, 1);
  mGraphLayout->addWidget(mSegmentPanel);
  mSegmentPanel->setFixedWidth(PANEL_WIDTH);
  mSegmentPanel->hide();
  mSegmentLayout->addWidget(new QLabel(tr("Segments:"), mSegmentPanel));
  auto* lAll = new QCheckBox(tr("All"), mSegmentPanel);
  lAll->setChecked(true);
  mSegmentLayout->addWidget(lAll);
  mSegmentLayout->addStretch(1);
  mSegmentBoxes << lAll;
  connect(lAll, &QCheckBox::stateChanged, mBoxMapper, qOverload<>(&QSignalMapper::map));
  mBoxMapper->setMapping(lAll, 0);
  connect(mZoomMapper, &QSignalMapper::mappedInt, this, &PxTraceForm::MIActionsZoomsTriggered);
  connect(mEnableMapper, &QSignalMapper::mappedInt, this, &PxTraceForm::MIActionsEnablesTriggered);
  connect(mBoxMapper, &QSignalMapper::mappedInt, this, &PxTraceForm::CBSegmentEnablesTriggered);

  QMenu* lActions = mMenuBar->addMenu(tr("Actions"));
  lActions->addAction(tr("Set Offsets") + QStringLiteral("\tAlt-S"), this, &PxTraceForm::MIActionsSetOffsetsTriggered);
  lActions->addAction(tr("Traces at their normal position") + QStringLiteral("\tAlt-T"), this,
                      &PxTraceForm::MIActionsResetOffsetsTriggered);
  lActions->addAction(tr("Separate Traces") + QStringLiteral("\tAlt-A"), this,
                      &PxTraceForm::MIActionsAutoSetOffsetsTriggered);
  mZoomMenu = lActions->addMenu(tr("Zoom"));
  mZoomMenu->addAction(tr("All"), this, &PxTraceForm::MIActionsZoomAllTriggered);
  mShowMenu = lActions->addMenu(tr("Show segment"));
  mShowMenu->addAction(tr("Show All Segments") + QStringLiteral("\tAlt-E"), this,
                       &PxTraceForm::MIActionsEnableAllTriggered);
  mShowMenu->addAction(tr("Hide All Segments") + QStringLiteral("\tAlt-D"), this,
                       &PxTraceForm::MIActionsDisableAllTriggered);
  mShowPanelAction =
      mShowMenu->addAction(tr("Show Segment Panel"), this, &PxTraceForm::MIActionsShowSegmentsPanelTriggered);
  mShowPanelAction->setCheckable(true);

  QMenu* lSettings = mMenuBar->addMenu(tr("Settings"));
  lSettings->addAction(tr("Increase Trace Width") + QStringLiteral("\tW+"), this,
                       &PxTraceForm::MISettingsIncreaseWidthTriggered);
  lSettings->addAction(tr("Decrease Trace Width") + QStringLiteral("\tW-"), this,
                       &PxTraceForm::MISettingsDecreaseWidthTriggered);
  lSettings->addAction(tr("Increase Trace Spacing") + QStringLiteral("\tO+"), this,
                       &PxTraceForm::MISettingsIncreaseOffsetTriggered);
  lSettings->addAction(tr("Decrease Trace Spacing") + QStringLiteral("\tO-"), this,
                       &PxTraceForm::MISettingsDecreaseOffsetTriggered);
  QMenu* lMarkers = lSettings->addMenu(tr("Markers"));
  mMarkerActions[0] = lMarkers->addAction(tr("None"), this, &PxTraceForm::MISettingsMarkerNoneTriggered);
  mMarkerActions[1] = lMarkers->addAction(tr("X"), this, &PxTraceForm::MISettingsMarkerXTriggered);
  mMarkerActions[2] = lMarkers->addAction(tr("+"), this, &PxTraceForm::MISettingsMarkerCrossTriggered);
  mMarkerActions[3] = lMarkers->addAction(tr("Square"), this, &PxTraceForm::MISettingsMarkerSquareTriggered);
  mMarkerActions[4] = lMarkers->addAction(tr("Circle"), this, &PxTraceForm::MISettingsMarkerCircleTriggered);
  for (QAction* lAction : mMarkerActions) {
    lAction->setCheckable(true);
  }
  lSettings->addAction(tr("Reverse Video"), this, &PxTraceForm::MISettingsReverseVideoTriggered);
  mViewGridAction = lSettings->addAction(tr("View Grid"), this, &PxTraceForm::MISettingsViewGridTriggered);
  mViewGridAction->setCheckable(true);

  mGraph->ShowGrid(true);
  mViewGridAction->setChecked(mGraph->IsGridShown());
  mMarkerActions[0]->setChecked(true);
  setWidget(mContent);
  setWindowTitle(tr("Trace Display"));
  resize(500, 500);
}

PxTraceForm::~PxTraceForm() = default;

void PxTraceForm::SetFlags(unsigned int aFlags)
{
  PxDockWidget::SetFlags(aFlags);
  mDisplayFlags = aFlags;
  mGraph->SetFlags(aFlags);
}

void PxTraceForm::SetSensor(PxSensor* aSensor)
{
  const int lCount = aSensor != nullptr ? aSensor->ChannelCount() : 0;
  for (int s = 0; s < lCount; ++s) {
    const QString lText = QString::number(s);
    QAction* lZoom = mZoomMenu->addAction(lText);
    connect(lZoom, &QAction::triggered, mZoomMapper, qOverload<>(&QSignalMapper::map));
    mZoomMapper->setMapping(lZoom, s);

    QAction* lShow = mShowMenu->addAction(lText);
    lShow->setCheckable(true);
    lShow->setChecked(true);
    connect(lShow, &QAction::triggered, mEnableMapper, qOverload<>(&QSignalMapper::map));
    mEnableMapper->setMapping(lShow, s);
    mSegmentActions << lShow;

    auto* lBox = new QCheckBox(tr("%1").arg(s), mSegmentPanel);
    lBox->setChecked(true);
    // Above the stretch that keeps the boxes at the top of the panel.
    mSegmentLayout->insertWidget(mSegmentLayout->count() - 1, lBox);
    connect(lBox, &QCheckBox::stateChanged, mBoxMapper, qOverload<>(&QSignalMapper::map));
    mBoxMapper->setMapping(lBox, s + 1);
    mSegmentBoxes << lBox;
  }
  mGraph->SetSensor(aSensor);
}

void PxTraceForm::MIActionsSetOffsetsTriggered()
{
  mGraph->SetOffsets();
}

void PxTraceForm::MIActionsResetOffsetsTriggered()
{
  mGraph->ResetOffsets();
}

void PxTraceForm::MIActionsAutoSetOffsetsTriggered()
{
  mGraph->AutoSetOffsets(static_cast<unsigned long>(-1));
}

void PxTraceForm::MIActionsZoomAllTriggered()
{
  mGraph->ResetAxes();
}

void PxTraceForm::MIActionsEnableAllTriggered()
{
  mGraph->EnableAll();
  for (QAction* lAction : mSegmentActions) {
    lAction->setChecked(true);
  }
}

void PxTraceForm::MIActionsDisableAllTriggered()
{
  mGraph->DisableAll();
  for (QAction* lAction : mSegmentActions) {
    lAction->setChecked(false);
  }
}

void PxTraceForm::MIActionsShowSegmentsPanelTriggered()
{
  mSegmentPanel->setVisible(mSegmentPanel->isHidden());
}

void PxTraceForm::MISettingsIncreaseWidthTriggered()
{
  mGraph->IncreaseTraceWidth();
}

void PxTraceForm::MISettingsDecreaseWidthTriggered()
{
  mGraph->DecreaseTraceWidth();
}

void PxTraceForm::MISettingsIncreaseOffsetTriggered()
{
  mGraph->IncreaseOffset();
}

void PxTraceForm::MISettingsDecreaseOffsetTriggered()
{
  mGraph->DecreaseOffset();
}

void PxTraceForm::SelectMarker(unsigned short aStyle)
{
  mGraph->SetMarkerStyle(aStyle);
  for (unsigned short i = 0; i < 5; ++i) {
    mMarkerActions[i]->setChecked(i == aStyle);
  }
}

void PxTraceForm::MISettingsMarkerNoneTriggered()
{
  SelectMarker(0);
}

void PxTraceForm::MISettingsMarkerXTriggered()
{
  SelectMarker(1);
}

void PxTraceForm::MISettingsMarkerCrossTriggered()
{
  SelectMarker(2);
}

void PxTraceForm::MISettingsMarkerSquareTriggered()
{
  SelectMarker(3);
}

void PxTraceForm::MISettingsMarkerCircleTriggered()
{
  SelectMarker(4);
}

void PxTraceForm::MISettingsReverseVideoTriggered()
{
  mGraph->ReverseVideo();
}

void PxTraceForm::MISettingsViewGridTriggered()
{
  mGraph->ShowGrid(!mGraph->IsGridShown());
  mViewGridAction->setChecked(mGraph->IsGridShown());
}

void PxTraceForm::MIActionsZoomsTriggered(int aSegment)
{
  mGraph->AutoSetOffsets(static_cast<unsigned long>(aSegment));
}

void PxTraceForm::MIActionsEnablesTriggered(int aSegment)
{
  QAction* lAction = mSegmentActions.at(aSegment);
  const bool lState = lAction->isChecked();
  lAction->setChecked(lState);
  mSegmentBoxes.at(aSegment + 1)->setChecked(lState);
  mGraph->SetChannelEnabled(static_cast<unsigned long>(aSegment), lState);
}

void PxTraceForm::CBSegmentEnablesTriggered(int aIndex)
{
  const bool lState = mSegmentBoxes.at(aIndex)->isChecked();
  if (aIndex > 0) {
    mSegmentActions.at(aIndex - 1)->setChecked(lState);
    mGraph->SetChannelEnabled(static_cast<unsigned long>(aIndex - 1), lState);
    return;
  }
  if (lState) {
    mGraph->EnableAll();
  } else {
    mGraph->DisableAll();
  }
  for (QAction* lAction : mSegmentActions) {
    lAction->setChecked(lState);
  }
  // Each box set here reports back through the mapper; that only repeats what is being set.
  for (int i = 1; i < mSegmentBoxes.size(); ++i) {
    mSegmentBoxes.at(i)->setChecked(lState);
  }
}
