#include "core/audio/LiveAnalysisFixture.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace
{
using namespace liveSignals;
using testing::Each;

class LiveSpectrumTest : public LiveAnalysisFixture
{
protected:
    LiveSpectrumTest()
    {
        prepare();
        processor.model.setShowHeatmap (true);
    }

    using Spectrum = std::array<float, SpectrumAnalyser::binCount>;

    /** @returns the spectrum where there is a new one */
    [[nodiscard]] std::optional<Spectrum> newSpectrum()
    {
        Spectrum copy {};
        return analysis.spectrum().copy (copy) ? std::optional (copy) : std::nullopt;
    }
};

TEST_F (LiveSpectrumTest, theLastChunkOfTheInputIsCopied)
{
    const auto signal = signals::noise (2, 4 * 1024, 9);
    EXPECT_FALSE (newSpectrum().has_value());
    live.feed (signal, 512);

    Spectrum expected;
    SpectrumAnalyser().analyseSpectrum (signal[0].data() + 3 * 1024, signal[1].data() + 3 * 1024, expected.data());
    const auto spectrum = newSpectrum();
    ASSERT_TRUE (spectrum.has_value());
    EXPECT_EQ (*spectrum, expected);
    EXPECT_EQ (live.spectra, 4);
    EXPECT_FALSE (newSpectrum().has_value()) << "taken once";
}

TEST_F (LiveSpectrumTest, aMonoBusIsTransformedAsItIs)
{
    prepare (512, rate, 1);
    const auto signal = signals::noise (1, 2 * 1024, 9);
    live.feed (signal, 512);
    Spectrum expected;
    SpectrumAnalyser().analyseSpectrum (signal[0].data() + 1024, nullptr, expected.data());
    EXPECT_EQ (newSpectrum(), expected);
}

TEST_F (LiveSpectrumTest, nothingIsTransformedWithoutAHeatMap)
{
    processor.model.setShowHeatmap (false);
    live.feed (signals::noise (2, 2 * 1024, 9), 512);
    EXPECT_FALSE (newSpectrum().has_value());
    EXPECT_EQ (live.spectra, 0);
}

TEST_F (LiveSpectrumTest, aFrozenSpectrumStays)
{
    live.feed (signals::noise (2, 2 * 1024, 9), 512);
    const auto before = newSpectrum();
    analysis.spectrum().frozen = true;
    live.feed (signals::noise (2, 2 * 1024, 10), 512);
    EXPECT_FALSE (newSpectrum().has_value());
    Spectrum still;
    EXPECT_FALSE (analysis.spectrum().copy (still));
    EXPECT_EQ (before, still);

    analysis.spectrum().frozen = false;
    live.feed (signals::noise (2, 2 * 1024, 10), 512);
    EXPECT_TRUE (newSpectrum().has_value());
}

TEST_F (LiveSpectrumTest, silentAndNegativeChunksLeaveTheLastSpectrumStanding)
{
    live.feed (signals::constant (0.0f, 2 * 1024), 512);
    live.feed (signals::constant (-0.5f, 2 * 1024), 512);
    EXPECT_FALSE (newSpectrum().has_value());
    live.feed (signals::constant (0.5f, 1024), 512);
    EXPECT_TRUE (newSpectrum().has_value());
}

TEST_F (LiveSpectrumTest, aClearedSpectrumIsZero)
{
    live.feed (signals::noise (2, 2 * 1024, 9), 512);
    analysis.spectrum().clear();
    Spectrum spectrum;
    analysis.spectrum().copy (spectrum);
    EXPECT_THAT (spectrum, Each (0.0f));
}

TEST_F (LiveSpectrumTest, aChunkUnderWayLeavesAFrozenSpectrumAsItIs)
{
    // Frozen and cleared while a chunk is worked out, which began before.
    auto& spectrum = analysis.spectrum();
    Spectrum fresh;
    fresh.fill (1.0f);
    EXPECT_TRUE (spectrum.publish (fresh));
    EXPECT_TRUE (newSpectrum().has_value());
    spectrum.frozen = true;
    spectrum.clear();
    EXPECT_FALSE (spectrum.publish (fresh));

    Spectrum copy;
    EXPECT_FALSE (spectrum.copy (copy));
    EXPECT_THAT (copy, Each (0.0f));
}

TEST_F (LiveSpectrumTest, whatIsLessThanAChunkWaitsForTheRest)
{
    live.feed (signals::noise (2, 1023, 9), 1023);
    EXPECT_FALSE (newSpectrum().has_value());
    live.feed (signals::noise (2, 5, 9), 5);
    EXPECT_TRUE (newSpectrum().has_value());
}

TEST (FullAnalysisFifoTest, losesWhatComesLateAndNothingElse)
{
    PluginModel model;
    model.sampleRate = rate;
    model.decimationFactor = 4;
    model.isStereo = true;
    model.setShowHeatmap (true);
    TargetSet target;
    LiveAnalysis analysis (model, target, [] { return nothing; });
    analysis.prepare();
    std::atomic<int> spectra { 0 };
    const auto token = model.channels.add ([&] { ++spectra; }, Channels::dftAnalysisChanged);

    const auto feed = [&analysis] (const PluginRig::Signal& signal)
    {
        const std::vector<double> low (256, 0.25);

        for (std::size_t start = 0; start < signal[0].size(); start += 1024)
            analysis.feedAnalysis (
                low.data(), low.data(), 256, signal[0].data() + start, signal[1].data() + start, 1024);
    };
    const auto peakBin = [&analysis]
    {
        std::array<float, SpectrumAnalyser::binCount> spectrum;
        analysis.spectrum().copy (spectrum);
        return std::max_element (spectrum.begin() + 1, spectrum.end() - 1) - spectrum.begin();
    };

    // Nobody reads yet: 15 chunks fit, since one place stays free, and the late ones find no room.
    feed (sine (46.875 * 20, 15 * 1024));
    feed (sine (46.875 * 200, 30 * 1024));
    analysis.startThreads();
    analysis.runPass();
    EXPECT_EQ (spectra, 15);
    EXPECT_EQ (peakBin(), 20);

    feed (sine (46.875 * 100, 1024));
    analysis.runPass();
    EXPECT_EQ (spectra, 16);
    EXPECT_EQ (peakBin(), 100) << "there is room again";

    analysis.requestStop();
    analysis.joinThreads();
    model.channels.remove (token);
}

TEST (FullAnalysisFifoTest, storesABlockAsAWholeOrNotAtAll)
{
    PluginModel model;
    model.sampleRate = rate;
    model.decimationFactor = 4;
    model.isStereo = true;
    TargetSet target;
    LiveAnalysis crowded (model, target, [] { return nothing; });
    LiveAnalysis spacious (model, target, [] { return nothing; });

    // Into 4096 places, one of which stays free, go 13 blocks and a part of one.
    constexpr auto blockLength = 300;
    constexpr auto blockCount = 160;
    const auto noise = signals::noise (2, blockCount * blockLength, 9);
    const auto feed = [&noise] (LiveAnalysis& analysis, int block)
    {
        const auto* start = noise[0].data() + block * blockLength;
        const std::vector<double> low (start, start + blockLength);
        analysis.feedAnalysis (low.data(), low.data(), blockLength, nullptr, nullptr, 0);
    };

    for (auto* analysis : { &crowded, &spacious })
    {
        analysis->prepare();

        for (int block = 0; block < 13; ++block)
            feed (*analysis, block);
    }

    feed (crowded, 13);

    for (auto* analysis : { &crowded, &spacious })
    {
        analysis->startThreads();
        analysis->runPass();

        for (int block = 14; block < blockCount; ++block)
        {
            feed (*analysis, block);
            analysis->runPass();
        }

        analysis->requestStop();
        analysis->joinThreads();
    }

    EXPECT_GT (spacious.bands().bandLevels[0], resetLevelDb);

    for (std::size_t band = 0; band < analysisBandCount; ++band)
        EXPECT_EQ (crowded.bands().bandLevels[band], spacious.bands().bandLevels[band]) << band;
}
} // namespace
