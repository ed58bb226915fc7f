#include "app/Listener.h"

#include "targets/fit/FitTask.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>

namespace
{
/** As for the command in the window, which is ready below that. */
constexpr float restDb = 0.25f;

float differenceOrZero (float one, float other)
{
    const auto difference = one - other;
    return std::isfinite (difference) ? difference : 0.0f;
}

std::string fixed (double value, int digits)
{
    std::ostringstream text;
    text.precision (digits);
    text << std::fixed << value;
    return text.str();
}
} // namespace

Listener::Listener (double sampleRate, int channelCount)
    : rate (sampleRate),
      stereo (channelCount == 2),
      meters (sampleRate, channelCount),
      nextReading (static_cast<std::int64_t> (sampleRate))
{
}

void Listener::process (const float* left, const float* right, int count)
{
    for (int done = 0; done < count;)
    {
        const auto taken = std::min (blockLength - waitingCount, count - done);
        std::copy_n (left + done, taken, waiting[0].begin() + waitingCount);

        if (stereo)
            std::copy_n (right + done, taken, waiting[1].begin() + waitingCount);

        waitingCount += taken;
        done += taken;

        if (waitingCount == blockLength)
            measureWaiting();
    }
}

void Listener::measureWaiting()
{
    meters.process (waiting[0].data(), stereo ? waiting[1].data() : nullptr, waitingCount);
    heard += waitingCount;
    waitingCount = 0;

    if (heard >= nextReading)
    {
        nextReading += static_cast<std::int64_t> (rate);
        lastButOne = last;
        last = read();
    }
}

Listener::Reading Listener::read() const
{
    return { meters.lufs(), meters.bands() };
}

Listener::Reading Listener::finish()
{
    if (waitingCount > 0)
        measureWaiting();

    result = read();
    return result;
}

float Listener::largestMoveAtTheEnd() const
{
    if (! lastButOne.has_value())
        return std::numeric_limits<float>::infinity();

    auto largest = 0.0f;

    for (std::size_t band = 0; band < analysisBandCount; ++band)
        largest = std::max (largest,
                            std::abs (differenceOrZero (result.bands[band], result.lufs)
                                      - differenceOrZero (lastButOne->bands[band], lastButOne->lufs)));

    return largest;
}

std::vector<std::string> Listener::notes (const std::string& subject) const
{
    const auto seconds = static_cast<double> (heard) / rate;

    if (! std::isfinite (result.lufs))
        return { seconds <= 1.0
                     ? "a reading needs more than a second of sound, and of " + subject + " there are "
                           + fixed (seconds, 2) + " s, so nothing can be derived from it."
                     : "nothing in " + subject + " is louder than -70 LUFS, so nothing can be derived from it." };

    std::vector<std::string> sentences;
    std::string quietBands;

    // The last one is no reading of its own.
    for (std::size_t band = 0; band + 1 < analysisBandCount; ++band)
        if (! std::isfinite (result.bands[band]))
            quietBands +=
                (quietBands.empty() ? "" : ", ") + std::to_string (static_cast<int> (analysisCentresHz[band]));

    if (! quietBands.empty())
        sentences.push_back (subject + " is below -70 LUFS at " + quietBands
                             + " Hz, so nothing is raised or lowered for the target there.");

    if (result.lufs < quietLufs)
        sentences.push_back (
            subject + " is quiet, " + fixed (static_cast<double> (result.lufs), 1)
            + " LUFS: what the meters hear of it ends at -70, so softer bands and passages go unheard. "
              "A louder copy is matched better.");

    const auto move = largestMoveAtTheEnd();

    if (! std::isfinite (move))
        sentences.push_back ("the readings had no time to come to rest: of " + subject + " there are only "
                             + fixed (seconds, 2) + " s.");
    else if (move >= restDb)
        sentences.push_back ("the readings had not come to rest at the end of " + subject + ": they still moved by "
                             + fixed (static_cast<double> (move), 1) + " dB in its last seconds.");

    return sentences;
}
