#include "core/audio/BandEngine.h"

#include <cmath>
#include <mutex>
#include <span>
#include <tuple>
#include <utility>

namespace
{
/** Above this many waiting messages a queue is dropped, and the last drawing of each band follows. */
constexpr int longestQueue = 20;

const std::array<std::string, bandCount> gainIds { "band_gain_0", "band_gain_1", "band_gain_2", "band_gain_3",
                                                   "band_gain_4", "band_gain_5", "band_gain_6", "band_gain_7",
                                                   "band_gain_8", "band_gain_9" };

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

void BandEngine::Lane::handle (const QueuedMessage& queued)
{
    draw (queued.band, queued.drawing);
}

void BandEngine::Lane::endBatch()
{
    block.finishUpdates();
    block.disown();

    if (masterLimitsPending.exchange (false))
        engine.model.checkMasterLimits();
}

template <typename Use>
void BandEngine::Lane::takeAll (const Reader& read, Use&& use)
{
    Updates updates;
    DesignSettings settings;
    const auto count = static_cast<std::size_t> (read (updates));
    engine.model.readDesignSettings (settings);

    for (const auto& update : std::span (updates.data(), count))
        if (const auto name = parseBandMessageName (*update.parameterId);
            name.has_value() && static_cast<int> (index()) < update.modeCount)
            use (update, *name, take (update, *name, settings));
}

BandDrawing BandEngine::Lane::take (const BandUpdate& update, BandMessageName name, DesignSettings& settings) noexcept
{
    const auto value = update.values[index()];
    auto& last = drawings[static_cast<std::size_t> (name.band)];
    settings.gainScaleApplied = update.gainScaleApplied;

    if (name.kind != BandMessageKind::solo)
        return last = bandDrawingFor (name, value, block.mode(), settings);

    // A solo draws for itself alone, and its end brings back what was there.
    last.soloGain = last.soloGain && value == 1.0f;
    return settings.soloActive ? bandDrawingFor (name, value, block.mode(), settings) : last;
}

bool BandEngine::Lane::concernsMasterLimits (const BandUpdate& update, BandMessageName name) noexcept
{
    // A value that holds the gain scale comes from no change of a gain, and whoever scaled it has told what it means.
    return ! update.gainScaleApplied && (name.kind == BandMessageKind::gain || name.kind == BandMessageKind::q);
}

void BandEngine::Lane::draw (int band, const BandDrawing& drawing) noexcept
{
    block.draw (band, drawing);

    if (block.mode() == BlockProcessorMode::display && ! engine.model.soloActive() && ! engine.model.mainBypass())
        engine.publishResponse (block);
}

void BandEngine::Lane::post (const Reader& read) noexcept
{
    worker.post (
        [&] (auto nextSlot)
        {
            takeAll (read,
                     [&] (const BandUpdate& update, BandMessageName name, const BandDrawing& drawing)
                     {
                         auto& slot = nextSlot();
                         slot.message.mode = block.mode();
                         slot.message.value = update.values[index()];
                         slot.message.parameterId.assign (*update.parameterId);
                         slot.gainScaleApplied = update.gainScaleApplied;
                         slot.band = name.band;
                         slot.drawing = drawing;

                         if (concernsMasterLimits (update, name))
                             masterLimitsPending = true;
                     });
        });
}

void BandEngine::Lane::postDrawings (int count) noexcept
{
    worker.post (
        [this, count] (auto nextSlot)
        {
            for (int band = 0; band < count; ++band)
            {
                const auto& drawing = drawings[static_cast<std::size_t> (band)];
                auto& slot = nextSlot();
                slot.message.mode = block.mode();
                slot.message.value = drawing.gainDb;
                slot.message.parameterId.assign (gainIds[static_cast<std::size_t> (band)]);
                slot.gainScaleApplied = true;
                slot.band = band;
                slot.drawing = drawing;
            }
        });
}

bool BandEngine::Lane::applyAtOnce (const Reader* read, bool lostBefore)
{
    std::array<Drawn, bandCount> now;
    std::size_t count = 0;
    auto checkLimits = false;
    Drawings all;

    const auto lost = worker.clear (
        [&]
        {
            if (read != nullptr)
                takeAll (*read,
                         [&] (const BandUpdate& update, BandMessageName name, const BandDrawing& drawing)
                         {
                             now[count++] = { name.band, drawing };
                             checkLimits |= concernsMasterLimits (update, name);
                         });

            all = drawings;
        });

    // What waited in the queue is gone, so all bands are brought up to date.
    if (read == nullptr || lost || lostBefore)
        drawAll (all);

    for (const auto& drawn : std::span (now.data(), count))
        draw (drawn.band, drawn.drawing);

    block.finishUpdates();
    return checkLimits;
}

void BandEngine::Lane::catchUp() noexcept
{
    if (worker.hasHandledAll())
        return;

    Drawings all;

    if (worker.clear ([&] { all = drawings; }))
        drawAll (all);

    block.finishUpdates();
}

void BandEngine::Lane::drawFirstBand() noexcept
{
    BandDrawing drawing;
    worker.inOrder ([&] { drawing = drawings[0]; });
    draw (0, drawing);
    block.finishUpdates();
}

void BandEngine::Lane::drawAll (const Drawings& all) noexcept
{
    for (int band = 0; band < bandCount; ++band)
        draw (band, all[static_cast<std::size_t> (band)]);
}

BandEngine::BandEngine (PluginModel& modelToUse, std::function<bool()> isOfflineToUse)
    : model (modelToUse), isOffline (std::move (isOfflineToUse))
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

void BandEngine::dispatch (const BandUpdate& update)
{
    dispatchAsRead (
        [&update] (Updates& updates)
        {
            updates[0] = update;
            return 1;
        });
}

void BandEngine::send (const Reader& read)
{
    if (isOffline())
        applySynchronously (&read);
    else
        for (auto& current : lanes)
            current->post (read);
}

void BandEngine::repeatDrawings()
{
    if (isOffline())
        applySynchronously (nullptr);
    else
        for (auto& current : lanes)
            current->postDrawings (bandCount);
}

void BandEngine::note (const BandUpdate& update) noexcept
{
    const auto read = [&update] (Updates& updates)
    {
        updates[0] = update;
        return 1;
    };

    for (auto& current : lanes)
        current->worker.inOrder ([&] { current->takeAll (std::ref (read), [] (auto&&...) {}); });
}

void BandEngine::applySynchronously (const Reader* read)
{
    std::array<bool, modeCount> lost {};
    auto checkLimits = false;

    // All first, so that workers under way come to an end.
    for (std::size_t index = 0; index < lanes.size(); ++index)
        lost[index] = lanes[index]->worker.clear();

    for (std::size_t index = 0; index < lanes.size(); ++index)
    {
        const ScopedOwnership ownership (lanes[index]->block);
        checkLimits |= lanes[index]->applyAtOnce (read, lost[index]);
    }

    // Only for what was read just now. The main bypass comes here out of a notification, where nothing may be fired; a
    // check that a dropped message has left behind is made up for by maintainQueues().
    if (checkLimits)
        model.checkMasterLimits();
}

void BandEngine::publishResponse (const BlockProcessor& display)
{
    const auto curve = display.displayCurve();
    std::array<float, PluginModel::responsePointCount> curveDb;

    for (std::size_t point = 0; point < curveDb.size(); ++point)
        curveDb[point] = static_cast<float> (20.0 * std::log10 (curve[point]));

    {
        const std::lock_guard lock (model.responseLock);
        model.responseCurveDb = curveDb;
    }

    model.responseCurveChanged.store (true, std::memory_order_release);
}

void BandEngine::markForRebuild() noexcept
{
    for (auto& current : lanes)
        current->block.needsRebuild = true;
}

void BandEngine::serviceNext (Service service) noexcept
{
    // What is rendered from here on must not hang on how far the workers have come, nor on whose turn it is.
    const auto waits = service == Service::offlineAndWait;

    if (std::exchange (waitsForWorkers, waits) != waits && waits)
    {
        for (auto& current : lanes)
            serve (*current, service);

        serviceIndex = 0;
        return;
    }

    serve (*lanes[serviceIndex], service);
    serviceIndex = (serviceIndex + 1) % lanes.size();
}

void BandEngine::serve (Lane& target, Service service) noexcept
{
    const auto waits = service == Service::offlineAndWait;

    if (waits)
        target.block.own();

    const auto owned = waits || target.block.tryOwn();

    if (! waits && (! owned || target.worker.isBusy()))
    {
        target.worker.setSkip (true);
    }
    else
    {
        if (waits)
            target.catchUp();

        if (target.block.needsRebuild.exchange (false))
        {
            target.block.rebuild();

            if (service == Service::realTime)
                target.postDrawings (1);
            else
                target.drawFirstBand();
        }

        if (target.block.tapsReady.load (std::memory_order_acquire))
            target.block.copyTaps();
    }

    target.worker.setSkip (false);

    if (owned)
        target.block.disown();
}

void BandEngine::maintainQueues()
{
    for (auto& current : lanes)
    {
        current->worker.dropAbove (longestQueue);

        if (current->worker.takeUpdatesLost())
            current->postDrawings (bandCount);

        if (current->worker.hasHandledAll() && current->masterLimitsPending.exchange (false))
            model.checkMasterLimits();
    }
}

bool BandEngine::isIdle() const
{
    for (const auto& current : lanes)
        if (! current->worker.isIdle())
            return false;

    return true;
}
