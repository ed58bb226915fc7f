#include "app/ServedAudio.h"

#include "app/CommandError.h"
#include "dsp/design/FirLengths.h"
#include "dsp/rate/ReducedRate.h"

#include <cmath>

namespace
{
/** No recorder of sound makes files beyond these. */
constexpr double lowestRate = 1000.0;
constexpr double highestRate = 1000000.0;

std::string hertzOf (const AudioInput& input)
{
    return std::to_string (std::llround (input.sampleRate())) + " Hz";
}

void requirePossibleRate (const AudioInput& input, const std::string& path)
{
    if (input.sampleRate() < lowestRate || input.sampleRate() > highestRate)
        throw CommandError (ExitCode::unsupportedAudio,
                            "'" + path + "' has " + hertzOf (input)
                                + " by its header, which cannot be. The header is damaged, or the file is something "
                                  "else.");
}

void requireMonoOrStereo (const AudioInput& input, const std::string& path)
{
    if (input.channelCount() > 2)
        throw CommandError (ExitCode::unsupportedAudio,
                            "'" + path + "' has " + std::to_string (input.channelCount())
                                + " channels. Mono and stereo files are served.");
}
} // namespace

void requireServedAudio (const AudioInput& input, const std::string& path)
{
    requirePossibleRate (input, path);

    if (! decimationFactorFor (input.sampleRate()).has_value())
        throw CommandError (ExitCode::unsupportedAudio,
                            "'" + path + "' has " + hertzOf (input)
                                + ". The filters serve 44100, 48000, 88200, 96000, 176400 and 192000 Hz; "
                                  "convert the file first.");

    requireMonoOrStereo (input, path);
}

void requireConvertibleAudio (const AudioInput& input, const std::string& path)
{
    requirePossibleRate (input, path);
    requireMonoOrStereo (input, path);
}
