#include "DesignTimes.h"
#include "dsp/rate/ReducedRate.h"

#include "Measurement.h"
#include "TenBands.h"

#include "dsp/path/BlockProcessor.h"

#include <string>
#include <vector>

namespace
{
constexpr int messageCount = 1000;

class BandsInMotion final : public IDesignSource
{
public:
    BandsInMotion (double sampleRate, FilterMode mode, FilterPhase phase)
    {
        settings.sampleRate = sampleRate;
        settings.decimationFactor = decimationFactorFor (sampleRate).value_or (4);
        settings.filterMode = mode;
        settings.filterPhase = phase;

        for (std::size_t band = 0; band < settings.bands.size(); ++band)
        {
            auto& target = settings.bands[band];
            target.frequencyHz = tenBands[band].frequencyHz;
            target.gainDb = tenBands[band].gainDb;
            target.q = tenBands[band].q;
            target.active = 1.0f;
        }
    }

    void readDesignSettings (DesignSettings& destination) const noexcept override
    {
        const auto applied = destination.gainScaleApplied;
        destination = settings;
        destination.gainScaleApplied = applied;
    }

    DesignSettings settings;
};
} // namespace

DesignTimes DesignTimes::measure (double sampleRate, FilterMode mode, FilterPhase phase)
{
    BandsInMotion source (sampleRate, mode, phase);
    const auto block = std::make_unique<BlockProcessor> (source, BlockProcessorMode::stereo);
    block->prepare (sampleRate);
    block->own();

    const auto send = [&] (std::size_t band, float gainDb)
    {
        source.settings.bands[band].gainDb = gainDb;
        block->update (gainDb, "band_gain_" + std::to_string (band), false);
        block->finishUpdates();
    };

    for (std::size_t band = 0; band < tenBands.size(); ++band)
        send (band, tenBands[band].gainDb);

    std::vector<double> milliseconds;

    for (int message = 0; message < messageCount; ++message)
    {
        const auto band = static_cast<std::size_t> (message) % tenBands.size();
        const auto gainDb = 0.1f * static_cast<float> (message % 80) - 4.0f;
        const auto start = Measurement::threadSeconds();
        send (band, gainDb);
        milliseconds.push_back (1.0e3 * (Measurement::threadSeconds() - start));
    }

    block->disown();
    return { Measurement::median (milliseconds), Measurement::quantile (milliseconds, 0.99) };
}
