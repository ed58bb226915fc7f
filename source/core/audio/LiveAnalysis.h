#pragma once

#include "core/audio/LiveSpectrum.h"
#include "core/model/PluginModel.h"
#include "dsp/meters/BandAnalyser.h"
#include "dsp/meters/SpectrumAnalyser.h"
#include "dsp/threads/AudioFifo.h"
#include "dsp/threads/ThreadSignal.h"
#include "targets/GainTargets.h"
#include "targets/TargetSet.h"
#include "targets/TopBand.h"

#include <array>
#include <functional>
#include <mutex>
#include <span>
#include <thread>
#include <vector>

/** Measures what arrives, before the filters, on two threads of its own: the analysis thread takes the three low bands
   at the reduced rate and works out the gain targets, the spectrum thread takes the other bands and the spectrum.

    The audio thread writes into two FIFOs and, once one of them holds about 20 ms, wakes the analysis thread, which
    wakes the spectrum thread and waits for it at the end of its pass. A full FIFO loses a block of the analysis and
    nothing else.
    Each pass holds its thread's mutex; prepare takes both, the analysis thread's first, while the FIFOs change their
    shape. The audio thread takes neither. */
class LiveAnalysis
{
public:
    /** @param inputLoudness the overall reading in LUFS; any thread */
    LiveAnalysis (PluginModel& model, const TargetSet& target, std::function<float()> inputLoudness);
    ~LiveAnalysis();

    LiveAnalysis (const LiveAnalysis&) = delete;
    LiveAnalysis& operator= (const LiveAnalysis&) = delete;

    /** Starts the analysis thread, then the spectrum thread. */
    void startThreads();

    /** Asks both threads to end; then waits for them, the analysis thread first. The thread that started them. */
    void requestStop();
    void joinThreads();

    /** Sizes FIFOs, chunks and band meters for the model's rate and channels, and resets the measurement. Audio
     * stopped. */
    void prepare();

    /** Forgets what was measured: levels at -70 dB, gain targets at 0. The meters follow at the next pass; a pass under
        way leaves nothing of its own behind. Any thread but the audio thread. */
    void resetAnalysis();

    /** Has a pass made, whatever has come in, and waits for its end. Not the audio thread, nor the two threads
        themselves, nor a listener that they call. */
    void runPass();

    /** Takes a processed block: `lowCount` samples at the reduced rate, `count` at the full rate, unfiltered. `right`
       and `lowRight` are null for mono. Audio thread; real-time safe. */
    void feedAnalysis (const double* lowLeft,
                       const double* lowRight,
                       int lowCount,
                       const float* left,
                       const float* right,
                       int count) noexcept;

    /** The last chunk's spectrum: magnitudes as SpectrumAnalyser gives them. */
    [[nodiscard]] LiveSpectrum& spectrum() noexcept { return lastSpectrum; }

    /** Whether the last pass moved a gain target by more than 0.05 dB. */
    std::atomic<bool> gainTargetChanged { false };

    /** The measured levels, and what the target asks for: their atomics may be read on any thread. */
    [[nodiscard]] const BandAnalyser& bands() const noexcept { return analyser; }
    [[nodiscard]] const GainTargets& gainTargets() const noexcept { return targets; }

    static constexpr int decimatedCapacity = 4096;
    static constexpr int fullRateCapacity = 16384;
    static constexpr int chunkLength = 1024;

private:
    using Chunk = std::array<std::vector<float>, 2>;

    /** Counts resets. */
    using Generation = std::atomic<unsigned>;

    void analyseDecimated();
    void analyseFullRate();
    void analyseSpectrumOf (const Chunk& chunk);

    // Waking a thread costs more than most passes: the analysis thread is left asleep until chunksPerPass have come in,
    // the spectrum thread while it would find no whole chunk. A reset wakes either.
    [[nodiscard]] bool analysisHasWork() const noexcept;
    [[nodiscard]] bool spectrumHasWork() const noexcept;
    [[nodiscard]] bool isReset (const Generation& seen) const noexcept;

    void updateTopBand();
    void updateGainTargets();
    void forgetReadings() noexcept;
    void restoreHighLevels() noexcept;

    /** Asked at the end of a pass, once it has stored everything. */
    [[nodiscard]] bool wasResetSince (unsigned generation) noexcept;
    [[nodiscard]] unsigned
    takeReset (Generation& seen, AudioFifo& fifo, void (BandAnalyser::*resetBands)() noexcept) noexcept;
    static void resizeChunk (Chunk& chunk, int length);

    PluginModel& model;
    const TargetSet& target;
    const std::function<float()> inputLoudness;

    BandAnalyser analyser;
    SpectrumAnalyser spectrumAnalyser;
    GainTargets targets;
    RememberedTopBand topBand; ///< the analysis thread's

    LiveSpectrum lastSpectrum;

    AudioFifo decimatedFifo { 2, decimatedCapacity };
    AudioFifo fullRateFifo { 2, fullRateCapacity };
    Chunk lowBlock;
    Chunk decimatedChunk;
    Chunk fullRateChunk;
    int chunksPerPass = 1;
    int channels = 2;

    Generation resetGeneration { 0 };
    Generation analysisGeneration { 0 }; ///< the last that the analysis thread has taken
    Generation spectrumGeneration { 0 };

    std::mutex analysisPass;
    std::mutex spectrumPass;
    ThreadSignal analysisSignal;
    ThreadSignal spectrumSignal;
    std::thread analysisThread;
    std::thread spectrumThread;
};
