#include "gui/editor/UnaskedMessages.h"

UnaskedMessages::UnaskedMessages (PluginModel& pluginModel, Overlays& shown, DropDownPanels& panels)
    : model (pluginModel), overlays (shown), dropDowns (panels)
{
}

EditorMessages::Situation UnaskedMessages::situation() const
{
    const auto& state = model.interfaceState;
    EditorMessages::Situation result;
    result.notificationsWanted = model.showNotifications;
    result.menuOpen = state.bandsPanelOpen;
    result.bandChangedByUser = state.bandChangedByUser;
    result.overlayOpen = state.settingsOpen || state.helpOpen || state.analysisOpen;
    result.smartBandsReady = model.smartBandsReady();
    result.transportPlaying = model.transport.isPlaying();
    result.canUseMasterMode = model.canUseMasterMode();
    result.masterMode = model.filterMode() == FilterMode::master;
    result.masterMessageCount = state.masterMessageCount;
    return result;
}

void UnaskedMessages::explainMasterLimits()
{
    if (! EditorMessages::showsMasterLimits (situation()))
        return;

    auto& state = model.interfaceState;
    ++state.masterMessageCount;
    state.bandChangedByUser = false;
    overlays.showMessage (EditorMessages::masterLimits());
}

void UnaskedMessages::noteBandsOutOfScale()
{
    if (EditorMessages::showsBandsOutOfScale (situation()))
        overlays.showMessage (EditorMessages::bandsOutOfScale());
}

void UnaskedMessages::offerSmartBands()
{
    if (! EditorMessages::offersSmartBands (situation()))
        return;

    for (const auto place : { MainWindow::Place::outputGainPanel, MainWindow::Place::gainScalePanel })
        dropDowns.hide (place);

    overlays.offerSmartBands();
}
