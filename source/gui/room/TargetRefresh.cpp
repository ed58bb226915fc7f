#include "gui/room/TargetRefresh.h"

#include "targets/DisplayCurve.h"

#include <tuple>

namespace
{
/** The largest move of a pass, in dB, below which what has been measured may be shown, and may be built upon. */
constexpr float readyToShowDb = 0.5f;
constexpr float readyToBuildDb = 0.25f;
} // namespace

TargetRefresh::TargetRefresh (VelmoraAudioProcessor& processorToUse)
    : processor (processorToUse), model (processorToUse.model)
{
    subscription = model.channels.add ([this] { passEnded(); }, Channels::integratedLUFSAnalysisChanged);
}

TargetRefresh::~TargetRefresh()
{
    model.channels.remove (subscription);
    cancelPendingUpdate();
}

std::array<float, analysisBandCount> TargetRefresh::readTargets() const
{
    std::array<float, analysisBandCount> targets;

    for (std::size_t band = 0; band < targets.size(); ++band)
        targets[band] = processor.liveAnalysis().gainTargets().gainTarget[band].load (std::memory_order_relaxed);

    return targets;
}

void TargetRefresh::passEnded()
{
    const Findings found { .maxChange = processor.liveAnalysis().gainTargets().maxChange,
                           .moved = processor.liveAnalysis().gainTargetChanged,
                           .targets = readTargets() };

    if (found.maxChange == 0.0f && ! found.moved)
        return;

    {
        const std::scoped_lock guard (mailboxLock);
        const auto movedBefore = mailbox && mailbox->moved;
        mailbox = found;
        mailbox->moved = found.moved || movedBefore;
    }

    triggerAsyncUpdate();
}

std::optional<TargetRefresh::Findings> TargetRefresh::takeFindings()
{
    const std::scoped_lock guard (mailboxLock);
    return std::exchange (mailbox, std::nullopt);
}

void TargetRefresh::rebuild()
{
    model.interfaceState.rowsChanged = true;
    refresh();
}

void TargetRefresh::startAnew()
{
    std::ignore = takeFindings();
    rebuild();
}

void TargetRefresh::refresh()
{
    const auto found = takeFindings();

    if (processor.presets.currentPreset().id == Presets::noTargetsId)
        return;

    if (model.interfaceState.rowsChanged || (found && found->moved))
        storeCurve (found ? found->targets : readTargets());

    if (found)
        declareReady (found->maxChange);

    model.setIntegratedLUFSAnalysisChanged (false, false);
    model.interfaceState.rowsChanged = false;
}

void TargetRefresh::storeCurve (const std::array<float, analysisBandCount>& targets)
{
    auto& state = model.interfaceState;
    auto frequencies = DisplayCurve::frequencies (state.roomHeight);
    auto curve = DisplayCurve::valuesAt (frequencies, targets);

    const std::scoped_lock guard (state.rowsLock);
    std::swap (state.curveFrequencies, frequencies);
    std::swap (state.targetCurve, curve);
}

void TargetRefresh::declareReady (float maxChange)
{
    // Exactly 0 says that nothing was measured.
    if (! (maxChange > 0.0f))
        return;

    if (maxChange < readyToShowDb && ! model.targetsReady())
        model.setTargetsReady (true, true);

    if (maxChange < readyToBuildDb && ! model.smartBandsReady())
        model.setSmartBandsReady (true, true);
}
