#include "core/audio/BandEngine.h"

#include <cmath>
#include <mutex>
#include <tuple>
#include <utility>

namespace
{
/** Above this many waiting messages a queue is dropped, and the current settings follow. */
constexpr int longestQueue = 20;

const std::string firstGainId { "band_gain_0" };

/** Owns a BlockProcessor for a scope. */
class ScopedOwnership
{
public:
    explicit ScopedOwnership (BlockProcessor& blockToOwn) noexcept : block (blockToOwn) { block.own(); }
    ~ScopedOwnership() { block.disown(); }

    ScopedOwnership (const ScopedOwnership&) = delete;
    ScopedOwnership& operator= (const ScopedOwnership&) = delete;

private:
    BlockProcessor& block;
};
} // namespace

BandEngine::Lane::Lane (BandEngine& engineToUse, BlockProcessorMode mode)
    : engine (engineToUse), block (engineToUse.model, mode), worker (*this)
{
}

void BandEngine::Lane::endBatch()
{
    block.finishUpdates();
    block.disown();

    if (std::exchange (masterLimitsPending, false))
        engine.model.checkMasterLimits();
}

BandEngine::BandEngine (PluginModel& modelToUse,
                        std::function<bool()> isOfflineToUse,
                        std::function<void (CurrentUpdates&)> readCurrentUpdatesToUse)
    : model (modelToUse),
      isOffline (std::move (isOfflineToUse)),
      readCurrentUpdates (std::move (readCurrentUpdatesToUse))
{
    for (std::size_t index = 0; index < lanes.size(); ++index)
        lanes[index] = std::make_unique<Lane> (*this, static_cast<BlockProcessorMode> (index));
}

BandEngine::~BandEngine()
{
    requestStop();
    joinWorkers();
}

void BandEngine::startWorkers()
{
    for (auto& current : lanes)
        current->thread = std::thread ([&worker = current->worker] { worker.run(); });
}

void BandEngine::requestStop()
{
    for (auto& current : lanes)
        current->worker.requestStop();
}

void BandEngine::joinWorkers()
{
    for (auto& current : lanes)
        if (current->thread.joinable())
            current->thread.join();
}

void BandEngine::prepare (double sampleRate)
{
    for (auto& current : lanes)
    {
        const ScopedOwnership ownership (current->block);

        // Before the lengths are read: a change from now on asks for another rebuild.
        current->block.needsRebuild = false;
        current->block.prepare (sampleRate);
    }
}

bool BandEngine::rebuildPending()
{
    auto any = false;

    for (auto& current : lanes)
        if (current->block.needsRebuild.exchange (false))
        {
            const ScopedOwnership ownership (current->block);
            current->block.rebuild();
            any = true;
        }

    return any;
}

void BandEngine::sendCurrentUpdates()
{
    dispatched.untilSettled (
        [this]
        {
            CurrentUpdates updates;
            readCurrentUpdates (updates);
            send (updates);
        });
}

void BandEngine::dispatch (std::span<const BandUpdate> updates)
{
    dispatched.raise();
    send (updates);
}

void BandEngine::send (std::span<const BandUpdate> updates)
{
    if (isOffline())
    {
        applySynchronously (updates);
        return;
    }

    for (const auto& update : updates)
        for (std::size_t index = 0; index < static_cast<std::size_t> (update.modeCount); ++index)
            lanes[index]->worker.post (
                lanes[index]->block.mode(), update.values[index], *update.parameterId, update.gainScaleApplied);
}

void BandEngine::applySynchronously (std::span<const BandUpdate> updates)
{
    std::array<bool, modeCount> lost {};
    auto limitsPending = false;

    for (std::size_t index = 0; index < lanes.size(); ++index)
        lost[index] = lanes[index]->worker.clear();

    for (std::size_t index = 0; index < lanes.size(); ++index)
    {
        auto& target = *lanes[index];
        const ScopedOwnership ownership (target.block);

        // What waited in the queue is gone, so the bands are brought up to date first. The Master limits hang on the
        // parameters alone and were told when these changed.
        if (lost[index])
        {
            CurrentUpdates current;
            readCurrentUpdates (current);

            for (const auto& update : current)
                std::ignore = apply (target, update.values[index], *update.parameterId, update.gainScaleApplied);
        }

        for (const auto& update : updates)
            if (static_cast<int> (index) < update.modeCount)
                limitsPending |= apply (target, update.values[index], *update.parameterId, update.gainScaleApplied);

        target.block.finishUpdates();
    }

    if (limitsPending)
        model.checkMasterLimits();
}

void BandEngine::handleBandMessage (Lane& target, const QueuedMessage& queued)
{
    target.masterLimitsPending |=
        apply (target, queued.message.value, queued.message.parameterId, queued.gainScaleApplied);
}

bool BandEngine::apply (Lane& target, float value, const std::string& parameterId, bool gainScaleApplied)
{
    target.block.update (value, parameterId, gainScaleApplied);

    if (target.block.mode() == BlockProcessorMode::display && ! model.soloActive() && ! model.mainBypass())
        publishResponse (target.block);

    // A value that holds the gain scale comes from no change of a gain, and whoever scaled it has told what it means.
    if (gainScaleApplied)
        return false;

    const auto name = parseBandMessageName (parameterId);
    return name.has_value() && (name->kind == BandMessageKind::gain || name->kind == BandMessageKind::q);
}

void BandEngine::publishResponse (const BlockProcessor& display)
{
    const auto curve = display.displayCurve();

    {
        const std::lock_guard lock (model.responseLock);

        for (std::size_t point = 0; point < model.responseCurveDb.size(); ++point)
            model.responseCurveDb[point] = static_cast<float> (20.0 * std::log10 (curve[point]));
    }

    model.responseCurveChanged.store (true, std::memory_order_release);
}

void BandEngine::markForRebuild() noexcept
{
    for (auto& current : lanes)
        current->block.needsRebuild = true;
}

void BandEngine::serviceNext (bool realtime) noexcept
{
    auto& target = *lanes[serviceIndex];
    serviceIndex = (serviceIndex + 1) % lanes.size();

    const auto owned = target.block.tryOwn();
    auto limitsPending = false;

    if (! owned || target.worker.isBusy())
    {
        target.worker.setSkip (true);
    }
    else
    {
        if (target.block.needsRebuild.exchange (false))
        {
            target.block.rebuild();
            const auto gain = model.getBandValue (0, Settings::Parameter::gain);

            if (realtime)
            {
                target.worker.post (target.block.mode(), gain, firstGainId, false);
            }
            else
            {
                limitsPending = apply (target, gain, firstGainId, false);
                target.block.finishUpdates();
            }
        }

        if (target.block.tapsReady.load (std::memory_order_acquire))
            target.block.copyTaps();
    }

    target.worker.setSkip (false);

    if (owned)
        target.block.disown();

    if (limitsPending)
        model.checkMasterLimits();
}

void BandEngine::maintainQueues()
{
    for (auto& current : lanes)
    {
        current->worker.dropAbove (longestQueue);

        if (current->worker.takeUpdatesLost())
            postCurrentUpdates (*current);
    }
}

void BandEngine::postCurrentUpdates (Lane& target)
{
    const auto index = static_cast<std::size_t> (target.block.mode());

    dispatched.untilSettled (
        [this, &target, index]
        {
            CurrentUpdates updates;
            readCurrentUpdates (updates);

            for (const auto& update : updates)
                target.worker.post (
                    target.block.mode(), update.values[index], *update.parameterId, update.gainScaleApplied);
        });
}

bool BandEngine::isIdle() const
{
    for (const auto& current : lanes)
        if (! current->worker.isIdle())
            return false;

    return true;
}
