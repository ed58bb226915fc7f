#pragma once

#include "dsp/design/BandCurves.h"
#include "dsp/design/BandDesign.h"
#include "dsp/design/TapDesigner.h"
#include "dsp/path/BlockPath.h"

#include <atomic>
#include <string>

/** What a BlockProcessor asks of its owner. */
class IDesignSource
{
public:
    virtual ~IDesignSource() = default;

    /** Takes a snapshot of the parameters and of the stream's rate; `gainScaleApplied` is the caller's and stays. Any
        thread; real-time safe. */
    virtual void readDesignSettings (DesignSettings& settings) const noexcept = 0;
};

/** The equaliser's engine for one mode: ten bands' curves, the taps designed from them, and the filters that run them.

    Hand-over. Curves, taps and lengths belong to whoever owns the object through tryOwn() or own(): the worker from
    before its first message until the taps of its batch are made, the audio thread for the moment in which it copies
    taps or rebuilds, and prepare. The worker sets `tapsReady` after it made taps, the audio thread clears it when it
    has copied them. The filters themselves belong to the audio thread, or to prepare while audio is stopped. */
class BlockProcessor
{
public:
    using Mode = BlockProcessorMode;

    /** Blocks of up to BlockPath::maxBlock samples; everything is sized here, once. */
    BlockProcessor (const IDesignSource& owner, Mode mode);

    BlockProcessor (const BlockProcessor&) = delete;
    BlockProcessor& operator= (const BlockProcessor&) = delete;

    [[nodiscard]] Mode mode() const noexcept { return blockMode; }

    //==================================================================================================================
    // Ownership

    /** One try. Real-time safe. */
    [[nodiscard]] bool tryOwn() noexcept;

    /** Waits, yielding, until nobody else owns. */
    void own() noexcept;

    void disown() noexcept;

    //==================================================================================================================
    // Design, by the owner

    /** Takes a new rate: lengths, identity taps, empty filters. Allocates. Audio stopped.
        @param sampleRate in Hz */
    void prepare (double sampleRate);

    /** Takes the lengths of the current mode, identity taps and empty filters, as after a change of mode or phase.
        Audio thread; real-time safe. */
    void rebuild() noexcept;

    /** Draws the curve of the band that the name ends in, with `value` for the parameter that the name holds. Names
        that hold none are ignored. Taps are left to finishUpdates(). Real-time safe after prepare().
        @param gainScaleApplied the value holds the gain scale already */
    void update (float value, const std::string& parameterName, bool gainScaleApplied) noexcept;

    /** Draws a band's curve as it was drawn before, or as an update came to be drawn. Taps are left to finishUpdates().
        Real-time safe after prepare(). */
    void draw (int band, const BandDrawing& drawing) noexcept;

    /** Makes the taps for all updates since the last call and sets tapsReady; does nothing without an update. Real-time
        safe after prepare(). */
    void finishUpdates() noexcept;

    /** The sum of all bands as linear magnitude, for the display mode. */
    [[nodiscard]] std::span<const double> displayCurve() const noexcept { return curves.displayCurve(); }

    /** What the bands were drawn as, and their sums, which the taps are fitted to. */
    [[nodiscard]] const BandCurves& bandCurves() const noexcept { return curves; }

    /** The designed taps. */
    [[nodiscard]] const TapSets& taps() const noexcept { return designer.tapSets(); }

    //==================================================================================================================
    // Audio thread

    /** Hands the designed taps to the filters and clears tapsReady. As owner; real-time safe. */
    void copyTaps() noexcept;

    /** Filters a block of two channels. `count` is a multiple of the decimation factor. Real-time safe.
        @param soloActive the value that the whole block goes by */
    void processStereo (const float* left,
                        const float* right,
                        const double* lowLeft,
                        const double* lowRight,
                        int count,
                        bool soloActive,
                        FilterPhase phase) noexcept;

    /** The same for one channel, whose output is outputLeft(). */
    template <typename Sample>
    void processSingle (const Sample* input, const double* low, int count, bool soloActive, FilterPhase phase) noexcept
    {
        path.processSingle (input, low, count, soloActive, phase);
    }

    [[nodiscard]] const double* outputLeft() const noexcept { return path.outputLeft(); }
    [[nodiscard]] const double* outputRight() const noexcept { return path.outputRight(); }

    /** Set by the parameter listener, cleared by the audio thread. */
    std::atomic<bool> needsRebuild { false };

    /** Set by the designing thread with release, tested by the audio thread with acquire. */
    std::atomic<bool> tapsReady { false };

private:
    void readSettings (bool gainScaleApplied) noexcept;
    void drawWithSettings (int band, const BandDrawing& drawing) noexcept;
    void configure (const FirLengths& lengths) noexcept;

    const IDesignSource& owner;
    const Mode blockMode;
    std::atomic_flag owned;

    DesignSettings settings;
    BandCurves curves;
    TapDesigner designer;
    bool updatesPending = false;

    BlockPath path;
};
