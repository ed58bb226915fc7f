#pragma once

#include "core/model/PluginModel.h"
#include "dsp/path/BlockProcessor.h"
#include "dsp/threads/ChangeCount.h"
#include "dsp/threads/ParameterWorker.h"

#include <array>
#include <functional>
#include <memory>
#include <span>
#include <thread>

/** One update as the engine spreads it over the modes: a value for each of the first `modeCount` modes. */
struct BandUpdate
{
    const std::string* parameterId = nullptr;
    std::array<float, 4> values {};
    int modeCount = 4;
    bool gainScaleApplied = false;
};

/** The four BlockProcessors, each with the worker that designs its filters, and the audio thread's round-robin service.

    Updates go to the workers' queues, or, while the host renders offline, are applied at once on the calling thread. */
class BandEngine
{
public:
    static constexpr int modeCount = 4;

    /** The updates that bring a mode's ten bands to what they are now. */
    using CurrentUpdates = std::array<BandUpdate, bandCount>;

    /** @param isOffline whether the current block is rendered offline; any thread, real-time safe
        @param readCurrentUpdates fills in the ten updates of the current settings; any thread, real-time safe */
    BandEngine (PluginModel& model,
                std::function<bool()> isOffline,
                std::function<void (CurrentUpdates&)> readCurrentUpdates);

    ~BandEngine();

    /** Starts the four workers, in order. */
    void startWorkers();

    /** Asks all workers to end, then waits for them, in order. */
    void requestStop();
    void joinWorkers();

    /** Gives every BlockProcessor a new rate. Waits for designs under way; audio stopped. */
    void prepare (double sampleRate);

    /** Rebuilds every BlockProcessor that is marked for it, and leaves the new design to sendCurrentUpdates(). Waits
       for designs under way; audio stopped.
        @returns whether any was */
    bool rebuildPending();

    /** Sends the current settings of all ten bands to all four modes. */
    void sendCurrentUpdates();

    /** Spreads updates over the workers, in the order of the modes for each update. Any thread; real-time safe while
       the host plays live, and without allocation when it renders offline. */
    void dispatch (std::span<const BandUpdate> updates);
    void dispatch (const BandUpdate& update) { dispatch (std::span (&update, 1)); }

    /** After a change of filter mode or phase: every BlockProcessor takes new lengths at its next service. */
    void markForRebuild() noexcept;

    /** Serves one BlockProcessor, in turn: rebuilds it, or hands over new taps, unless its worker is at it. Audio
       thread; real-time safe.
        @param realtime false while the host renders offline: a rebuild then designs at once */
    void serviceNext (bool realtime) noexcept;

    /** Keeps the queues short, and sends what was lost by that once a worker is idle. Message thread, every 50 ms. */
    void maintainQueues();

    [[nodiscard]] BlockProcessor& block (BlockProcessorMode mode) noexcept { return lane (mode).block; }
    [[nodiscard]] ParameterWorker& worker (BlockProcessorMode mode) noexcept { return lane (mode).worker; }

    /** True when no worker has anything left to do. */
    [[nodiscard]] bool isIdle() const;

private:
    /** One mode: its BlockProcessor, its worker and that worker's thread. */
    struct Lane final : IMessageHandler
    {
        Lane (BandEngine& engineToUse, BlockProcessorMode mode);

        void beginBatch() override { block.own(); }
        void handle (const QueuedMessage& queued) override { engine.handleBandMessage (*this, queued); }
        void endBatch() override;

        BandEngine& engine;
        bool masterLimitsPending = false;
        BlockProcessor block;
        ParameterWorker worker;
        std::thread thread;
    };

    [[nodiscard]] Lane& lane (BlockProcessorMode mode) noexcept { return *lanes[static_cast<std::size_t> (mode)]; }
    void handleBandMessage (Lane& target, const QueuedMessage& queued);

    /** Draws one update. As the target's owner, so nothing may be fired here: a listener that is running could be
        waiting for the same target.
        @returns whether the Master limits have to be checked afterwards */
    [[nodiscard]] bool apply (Lane& target, float value, const std::string& parameterId, bool gainScaleApplied);

    /** Spreads updates, or applies them where the host renders offline. */
    void send (std::span<const BandUpdate> updates);

    void applySynchronously (std::span<const BandUpdate> updates);
    void publishResponse (const BlockProcessor& display);
    void postCurrentUpdates (Lane& target);

    PluginModel& model;
    const std::function<bool()> isOffline;
    const std::function<void (CurrentUpdates&)> readCurrentUpdates;
    std::array<std::unique_ptr<Lane>, modeCount> lanes;
    std::size_t serviceIndex = 0;

    /** Raised for changes that are sent. Current values, which are read first, would else overwrite a newer one. */
    ChangeCount dispatched;
};
