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
} // namespace

void requireServedAudio (const AudioInput& input, const std::string& path)
{
    const auto hertz = std::to_string (std::llround (input.sampleRate())) + " Hz";

    if (input.sampleRate() < lowestRate || input.sampleRate() > highestRate)
        throw CommandError (ExitCode::unsupportedAudio,
                            "'" + path + "' has " + hertz
                                + " by its header, which cannot be. The header is damaged, or the file is something "
                                  "else.");

    if (! decimationFactorFor (input.sampleRate()).has_value())
        throw CommandError (ExitCode::unsupportedAudio,
                            "'" + path + "' has " + hertz
                                + ". The filters serve 44100, 48000, 88200, 96000, 176400 and 192000 Hz; "
                                  "convert the file first.");

    if (input.channelCount() > 2)
        throw CommandError (ExitCode::unsupportedAudio,
                            "'" + path + "' has " + std::to_string (input.channelCount())
                                + " channels. Mono and stereo files are served.");
}
