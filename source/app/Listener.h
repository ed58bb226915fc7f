#pragma once

#include "app/Measurement.h"
#include "app/OfflineMeasurement.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/** Hears a recording as the plug-in's live analysis does, and notices whether its readings came to rest. One thread. */
class Listener
{
public:
    struct Reading
    {
        float lufs = 0.0f;
        Measurement::Levels bands {};
    };

    /** @param sampleRate one of the six that the filters serve; @param channelCount 1 or 2 */
    Listener (double sampleRate, int channelCount);

    /** Takes a block of any length. `right` is null for mono. */
    void process (const float* left, const float* right, int count);

    /** What was heard of all that came. Nothing comes afterwards. */
    [[nodiscard]] Reading finish();

    /** What a user should know of the reading, in sentences: too little sound, too quiet, or not yet at rest, which is
        when what the bands would be raised or lowered by moved by 0.25 dB or more in the last seconds. After finish().
        @param subject what they call the recording */
    [[nodiscard]] std::vector<std::string> notes (const std::string& subject) const;

private:
    void measureWaiting();
    [[nodiscard]] Reading read() const;
    [[nodiscard]] float largestMoveAtTheEnd() const;

    /** A multiple of every decimation factor. */
    static constexpr int blockLength = 1024;

    const double rate;
    const bool stereo;
    OfflineMeasurement meters;
    std::array<std::array<float, blockLength>, 2> waiting {};
    int waitingCount = 0;

    std::int64_t heard = 0;
    std::int64_t nextReading;
    std::optional<Reading> last;
    std::optional<Reading> lastButOne;
    Reading result;
};
