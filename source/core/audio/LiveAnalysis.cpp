#include "core/audio/LiveAnalysis.h"

#include <algorithm>
#include <utility>

namespace
{
constexpr double lowestRate = 44100.0;

/** As many as take about as long at this rate as one does at 44.1 or 48 kHz, so that threads are woken equally often in
    a second. They fill half of either FIFO at most: the rest is for what comes before the thread is awake. */
int chunksToWaitFor (double sampleRate, int lowChunkLength) noexcept
{
    const auto fittingLow = LiveAnalysis::decimatedCapacity / 2 / std::max (lowChunkLength, 1);
    const auto fittingFull = LiveAnalysis::fullRateCapacity / 2 / LiveAnalysis::chunkLength;
    return std::clamp (static_cast<int> (sampleRate / lowestRate), 1, std::min (fittingLow, fittingFull));
}
} // namespace

LiveAnalysis::LiveAnalysis (PluginModel& modelToUse,
                            const TargetSet& targetToUse,
                            std::function<float()> inputLoudnessToUse)
    : model (modelToUse),
      target (targetToUse),
      inputLoudness (std::move (inputLoudnessToUse)),
      analysisSignal ([this] { analyseDecimated(); }),
      spectrumSignal ([this] { analyseFullRate(); })
{
    resizeChunk (lowBlock, decimatedCapacity);
    analyser.fillLevels (resetLevelDb);
}

LiveAnalysis::~LiveAnalysis()
{
    requestStop();
    joinThreads();
}

void LiveAnalysis::startThreads()
{
    analysisThread = std::thread ([this] { analysisSignal.run(); });
    spectrumThread = std::thread ([this] { spectrumSignal.run(); });
}

void LiveAnalysis::requestStop()
{
    analysisSignal.requestExit();
    spectrumSignal.requestExit();
}

void LiveAnalysis::joinThreads()
{
    for (auto* thread : { &analysisThread, &spectrumThread })
        if (thread->joinable())
            thread->join();
}

void LiveAnalysis::resizeChunk (Chunk& chunk, int length)
{
    for (auto& channel : chunk)
        channel.assign (static_cast<std::size_t> (length), 0.0f);
}

void LiveAnalysis::prepare()
{
    const std::scoped_lock analysisGuard (analysisPass);
    const std::scoped_lock spectrumGuard (spectrumPass);

    const auto rate = model.sampleRate.load();
    const auto factor = model.decimationFactor.load();
    channels = model.isStereo ? 2 : 1;

    resizeChunk (decimatedChunk, chunkLength / factor);
    chunksPerPass = chunksToWaitFor (rate, chunkLength / factor);
    resizeChunk (fullRateChunk, chunkLength);
    decimatedFifo.resize (channels, decimatedCapacity);
    fullRateFifo.resize (channels, fullRateCapacity);

    if (rate > 0.0)
        analyser.prepareBands (rate / factor, rate);

    forgetReadings();
}

void LiveAnalysis::resetAnalysis()
{
    resetGeneration.fetch_add (1, std::memory_order_acq_rel);
    forgetReadings();
}

void LiveAnalysis::forgetReadings() noexcept
{
    analyser.fillLevels (resetLevelDb);
    targets.clear();
    targets.maxChange = 0.0f;
}

void LiveAnalysis::feedAnalysis (const double* lowLeft,
                                 const double* lowRight,
                                 int lowCount,
                                 const float* left,
                                 const float* right,
                                 int count) noexcept
{
    if (decimatedFifo.capacity() - decimatedFifo.numReady() > lowCount)
    {
        std::transform (
            lowLeft, lowLeft + lowCount, lowBlock[0].begin(), [] (double x) { return static_cast<float> (x); });

        if (lowRight != nullptr)
            std::transform (
                lowRight, lowRight + lowCount, lowBlock[1].begin(), [] (double x) { return static_cast<float> (x); });

        const float* block[2] { lowBlock[0].data(), lowBlock[1].data() };
        decimatedFifo.write (block, lowRight != nullptr ? 2 : 1, lowCount);
    }

    if (fullRateFifo.capacity() - fullRateFifo.numReady() > count)
    {
        const float* block[2] { left, right };
        fullRateFifo.write (block, right != nullptr ? 2 : 1, count);
    }

    analysisSignal.wakeFromAudioThread (analysisHasWork());
}

unsigned
LiveAnalysis::takeReset (Generation& seen, AudioFifo& fifo, void (BandAnalyser::*resetBands)() noexcept) noexcept
{
    const auto generation = resetGeneration.load (std::memory_order_acquire);

    if (generation != seen.load (std::memory_order_relaxed))
    {
        fifo.discardReady();
        (analyser.*resetBands)();
        seen.store (generation, std::memory_order_relaxed);
    }

    return generation;
}

bool LiveAnalysis::wasResetSince (unsigned generation) noexcept
{
    // Writes what is there, so that it stands before a reset or behind it: either the reset comes behind what the pass
    // has stored, and takes it back, or it is seen here. A plain load could overtake those stores.
    return resetGeneration.fetch_add (0, std::memory_order_acq_rel) != generation;
}

void LiveAnalysis::restoreHighLevels() noexcept
{
    for (auto band = lowBandCount; band < analysisBandCount; ++band)
        analyser.bandLevels[band].store (resetLevelDb, std::memory_order_relaxed);
}

bool LiveAnalysis::isReset (const Generation& seen) const noexcept
{
    return resetGeneration.load (std::memory_order_acquire) != seen.load (std::memory_order_relaxed);
}

bool LiveAnalysis::spectrumHasWork() const noexcept
{
    return isReset (spectrumGeneration) || fullRateFifo.numReady() >= chunkLength;
}

bool LiveAnalysis::analysisHasWork() const noexcept
{
    return isReset (analysisGeneration) || fullRateFifo.numReady() >= chunksPerPass * chunkLength
           || decimatedFifo.numReady() >= chunksPerPass * static_cast<int> (decimatedChunk[0].size());
}

void LiveAnalysis::runPass()
{
    analysisSignal.runPass();
}

void LiveAnalysis::analyseDecimated()
{
    {
        const std::scoped_lock guard (analysisPass);

        if (spectrumHasWork())
            spectrumSignal.wake();

        const auto generation = takeReset (analysisGeneration, decimatedFifo, &BandAnalyser::resetLowBands);
        const auto length = static_cast<int> (decimatedChunk[0].size());
        float* chunk[2] { decimatedChunk[0].data(), decimatedChunk[1].data() };

        while (length > 0 && decimatedFifo.numReady() >= length && ! isReset (analysisGeneration))
        {
            decimatedFifo.read (chunk, channels, length);
            analyser.processLow (chunk[0], channels == 2 ? chunk[1] : nullptr, length);
        }

        spectrumSignal.waitUntilIdle();

        if (analysisSignal.isExitRequested())
            return;

        if (resetGeneration.load (std::memory_order_acquire) == generation)
        {
            updateTopBand();
            updateGainTargets();
        }

        // The spectrum thread sleeps, so all bands are this thread's.
        if (wasResetSince (generation))
        {
            forgetReadings();
            gainTargetChanged = false;
            return;
        }
    }

    model.setIntegratedLUFSAnalysisChanged (true, true);
}

void LiveAnalysis::updateTopBand()
{
    std::array<double, 3> below;

    for (std::size_t i = 0; i < below.size(); ++i)
        below[i] = static_cast<double> (analyser.bandLevels[6 + i].load (std::memory_order_relaxed));

    auto level = analyser.bandLevels[9].load (std::memory_order_relaxed);
    topBand.makeTopBandValue (below, &level);
    analyser.bandLevels[9].store (level, std::memory_order_relaxed);
}

void LiveAnalysis::updateGainTargets()
{
    std::array<float, analysisBandCount> levels;
    std::array<float, analysisBandCount> wanted;

    for (std::size_t band = 0; band < analysisBandCount; ++band)
    {
        levels[band] = analyser.bandLevels[band].load (std::memory_order_relaxed);
        wanted[band] = target.targetValues[band].load (std::memory_order_relaxed);
    }

    const auto lufsDifference = target.targetLufs.load (std::memory_order_relaxed) - inputLoudness();
    gainTargetChanged =
        targets.updateGainTargets (levels, wanted, lufsDifference, model.smartBandsReady() && model.targetsReady());
}

void LiveAnalysis::analyseFullRate()
{
    const std::scoped_lock guard (spectrumPass);
    const auto generation = takeReset (spectrumGeneration, fullRateFifo, &BandAnalyser::resetHighBands);
    float* chunk[2] { fullRateChunk[0].data(), fullRateChunk[1].data() };

    while (! fullRateChunk[0].empty() && fullRateFifo.numReady() >= chunkLength && ! isReset (spectrumGeneration))
    {
        fullRateFifo.read (chunk, channels, chunkLength);
        analyser.processHigh (chunk[0], channels == 2 ? chunk[1] : nullptr, chunkLength);
        analyseSpectrumOf (fullRateChunk);
    }

    if (wasResetSince (generation))
        restoreHighLevels();
}

void LiveAnalysis::analyseSpectrumOf (const Chunk& chunk)
{
    const auto* left = chunk[0].data();
    const auto* right = channels == 2 ? chunk[1].data() : nullptr;

    if (! SpectrumAnalyser::isWorthAnalysing (left, right) || ! model.showHeatmap() || lastSpectrum.frozen)
        return;

    LiveSpectrum::Magnitudes fresh;
    spectrumAnalyser.analyseSpectrum (left, right, fresh.data());

    if (lastSpectrum.publish (fresh))
        model.channels.fire (Channels::dftAnalysisChanged);
}
