#include "app/ServedAudio.h"

#include "app/CommandError.h"
#include "dsp/design/FirLengths.h"
#include "dsp/rate/ReducedRate.h"

void requireServedAudio (const AudioInput& input, const std::string& path)
{
    if (! decimationFactorFor (input.sampleRate()).has_value())
        throw CommandError (ExitCode::unsupportedAudio,
                            "'" + path + "' has " + juce::String (input.sampleRate()).toStdString()
                                + " Hz. The filters serve 44100, 48000, 88200, 96000, 176400 and 192000 Hz; "
                                  "convert the file first.");

    if (input.channelCount() > 2)
        throw CommandError (ExitCode::unsupportedAudio,
                            "'" + path + "' has " + std::to_string (input.channelCount())
                                + " channels. Mono and stereo files are served.");
}
