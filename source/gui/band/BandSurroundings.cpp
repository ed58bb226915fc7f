#include "gui/band/BandSurroundings.h"

#include "gui/band/MidSideControlPanel.h"
#include "gui/band/SolvaneControlPanel.h"

BandSurroundings::BandSurroundings (PluginModel& instance, std::function<RoomGeometry()> room)
    : model (instance), roomGeometry (std::move (room))
{
}

GainLimits BandSurroundings::gainLimits() const
{
    return { model.filterMode(), model.gainScalePercent(), roomGeometry().scaleDb };
}

bool BandSurroundings::isActive (int band) const noexcept
{
    return model.getBandValue (band, Settings::Parameter::active) == 1.0f;
}

bool BandSurroundings::scaleAnimating() const
{
    return model.interfaceState.scaleAnimating;
}

bool BandSurroundings::takeRebase()
{
    return model.interfaceState.rebaseDrag.exchange (false);
}

bool BandSurroundings::wheelReversed() const
{
    return model.reverseMousewheel;
}

bool BandSurroundings::bandsAlwaysShown() const
{
    return model.alwaysShowBand;
}

bool BandSurroundings::stereo() const
{
    return model.isStereo;
}

bool BandSurroundings::overlayOpen() const
{
    const auto& interface = model.interfaceState;
    return interface.settingsOpen || interface.helpOpen || interface.analysisOpen;
}

void BandSurroundings::masterExceeded()
{
    model.setCanUseMasterMode (false);
}

void BandSurroundings::setTypedGain (float gainDb)
{
    model.interfaceState.typedGainDb = gainDb;
}

SolvaneControlPanel* BandSurroundings::freeOverlapPanel (OverlapPanel which)
{
    auto& interface = model.interfaceState;
    const auto upper = which == OverlapPanel::upper;

    if (upper ? interface.upperPanelInUse : interface.lowerPanelInUse)
        return nullptr;

    auto& spare = upper ? interface.upperPanel : interface.lowerPanel;
    return dynamic_cast<SolvaneControlPanel*> (spare.getComponent());
}

void BandSurroundings::setOverlapPanelInUse (OverlapPanel which, bool inUse)
{
    auto& interface = model.interfaceState;
    (which == OverlapPanel::upper ? interface.upperPanelInUse : interface.lowerPanelInUse) = inUse;
}

void BandSurroundings::rebuildOverlapPanels()
{
    if (! model.interfaceState.closingEditor)
        model.setCreateOverlapControls (true, true);
}

MidSideControlPanel* BandSurroundings::midSidePanel()
{
    return dynamic_cast<MidSideControlPanel*> (model.interfaceState.midSidePanel.getComponent());
}
