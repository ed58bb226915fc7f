#pragma once

#include "core/model/PluginModel.h"
#include "dsp/path/BlockProcessor.h"
#include "dsp/threads/ParameterWorker.h"

#include <array>
#include <atomic>
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

    Updates go to the workers' queues, or, while the host renders offline, are applied at once on the calling thread.
    What an update comes to is settled when it is sent, under its queue's mutex, and kept for each mode and band: the
    last drawing. So what is drawn, and what is drawn again after a solo or a loss, is one and the same. */
class BandEngine
{
public:
    static constexpr int modeCount = 4;

    using Updates = std::array<BandUpdate, bandCount>;

    /** How the audio thread serves: in real time it passes over what a worker holds. Offline it designs a rebuild by
        itself; and where it is certain that nobody listens, it waits, so that what it renders never hangs on timing. */
    enum class Service
    {
        realTime,
        offline,
        offlineAndWait
    };

    /** @param isOffline whether the current block is rendered offline; any thread, real-time safe */
    BandEngine (PluginModel& model, std::function<bool()> isOffline);

    ~BandEngine();

    /** Starts the four workers, in order. */
    void startWorkers();

    /** Asks all workers to end, then waits for them, in order. */
    void requestStop();
    void joinWorkers();

    /** Gives every BlockProcessor a new rate. Waits for designs under way; audio stopped. */
    void prepare (double sampleRate);

    /** Rebuilds every BlockProcessor that is marked for it, and leaves the new design to repeatDrawings(). Waits for
        designs under way; audio stopped.
        @returns whether any was */
    bool rebuildPending();

    /** Sends an update to the modes that it is for. Any thread; real-time safe while the host plays live, and without
        allocation when it renders offline. */
    void dispatch (const BandUpdate& update);

    /** The same for updates that are made from parameters. `read` fills in the first of ten places and returns how many
        it has filled; it is called for each mode in turn, under the mutex of its queue: whatever changes behind it is
        sent behind it, too. It must be real-time safe and take no lock. */
    template <typename Read>
    void dispatchAsRead (Read&& read)
    {
        send (Reader (std::ref (read)));
    }

    /** Takes over what an update comes to without sending it. Any thread; real-time safe. */
    void note (const BandUpdate& update) noexcept;

    /** Has every mode draw its ten bands as it was last told to. What has been drawn stays as it is, and what was lost
        on its way is made good. Any thread; as dispatch(). */
    void repeatDrawings();

    /** After a change of filter mode or phase: every BlockProcessor takes new lengths at its next service, and draws
        the first band again, which brings its taps back. */
    void markForRebuild() noexcept;

    /** Serves one BlockProcessor, in turn: rebuilds it, or hands over new taps, unless its worker is at it. The first
        service that waits serves all four. Audio thread; real-time safe unless it waits. */
    void serviceNext (Service service) noexcept;

    /** Keeps the queues short, and sends what was lost by that once a worker is idle. Message thread, every 50 ms. */
    void maintainQueues();

    [[nodiscard]] BlockProcessor& block (BlockProcessorMode mode) noexcept { return lane (mode).block; }
    [[nodiscard]] ParameterWorker& worker (BlockProcessorMode mode) noexcept { return lane (mode).worker; }

    /** True when no worker has anything left to do. */
    [[nodiscard]] bool isIdle() const;

private:
    using Reader = std::function<int (Updates&)>;
    using Drawings = std::array<BandDrawing, bandCount>;

    struct Drawn
    {
        int band;
        BandDrawing drawing;
    };

    /** One mode: its BlockProcessor, its worker and that worker's thread. */
    struct Lane final : IMessageHandler
    {
        Lane (BandEngine& engineToUse, BlockProcessorMode mode);

        void beginBatch() override { block.own(); }
        void handle (const QueuedMessage& queued) override;
        void endBatch() override;

        void post (const Reader& read) noexcept;
        void postDrawings (int count) noexcept;

        /** Draws at once what is read, or all ten bands where there is no reader or something waited. As owner.
            @returns whether the Master limits are to be checked after what was read */
        [[nodiscard]] bool applyAtOnce (const Reader* read, bool lostBefore);

        /** Draws at once what waits in the queue or was lost. As owner. */
        void catchUp() noexcept;

        void drawFirstBand() noexcept;
        void drawAll (const Drawings& all) noexcept;

        /** Calls `use` with each update for this mode, its name and what it comes to. Under the worker's mutex. */
        template <typename Use>
        void takeAll (const Reader& read, Use&& use);

        /** Settles what an update comes to, and keeps it. Under the worker's mutex. */
        [[nodiscard]] BandDrawing
        take (const BandUpdate& update, BandMessageName name, DesignSettings& settings) noexcept;

        /** Whether the Master limits have to be checked after an update. */
        [[nodiscard]] static bool concernsMasterLimits (const BandUpdate& update, BandMessageName name) noexcept;

        /** Draws one band. As owner, so nothing may be fired here: a listener that is running could be waiting for the
            same block. */
        void draw (int band, const BandDrawing& drawing) noexcept;

        [[nodiscard]] std::size_t index() const noexcept { return static_cast<std::size_t> (block.mode()); }

        BandEngine& engine;

        /** Something was sent after which the Master limits are to be checked, whatever becomes of it. */
        std::atomic<bool> masterLimitsPending { false };

        BlockProcessor block;
        ParameterWorker worker;
        std::thread thread;

        /** What each band was last told to be drawn as. Under the worker's mutex. */
        Drawings drawings;
    };

    [[nodiscard]] Lane& lane (BlockProcessorMode mode) noexcept { return *lanes[static_cast<std::size_t> (mode)]; }

    /** Spreads updates, or applies them where the host renders offline. */
    void send (const Reader& read);

    void applySynchronously (const Reader* read);
    void publishResponse (const BlockProcessor& display);
    void serve (Lane& target, Service service) noexcept;

    PluginModel& model;
    const std::function<bool()> isOffline;
    std::array<std::unique_ptr<Lane>, modeCount> lanes;

    // The audio thread's.
    std::size_t serviceIndex = 0;
    bool waitsForWorkers = false;
};
