#include "app/ReferenceFile.h"

#include "app/AudioInput.h"
#include "app/CommandError.h"
#include "app/Interrupt.h"
#include "app/ProgressBar.h"
#include "app/ReferenceSamples.h"
#include "app/ServedAudio.h"
#include "dsp/rate/ReducedRate.h"

#include <algorithm>
#include <cmath>

namespace
{
/** In Hz; below it a file does not have all that is measured. */
constexpr double lowestServedRate = 44100.0;

TrackRange samplesOf (const TimeRange& range, double rate, int count, const std::string& path)
{
    const auto toSample = [&] (double seconds)
    { return static_cast<int> (std::min (std::round (seconds * rate), static_cast<double> (count))); };

    const TrackRange result { toSample (range.start), range.end.has_value() ? toSample (*range.end) : count };

    if (result.first >= count)
        throw CommandError (ExitCode::badArguments,
                            "'" + path + "' ends at " + TimeRange::textOf (count / rate) + ", before --range starts.");

    return result;
}

/** Why a reading is missing, or where it is. */
std::vector<std::string> notesOn (const ReferenceReading& result)
{
    std::vector<std::string> notes;

    if (! result.reading.exists)
        return { "nothing in '" + result.path
                 + "' could be measured: a reading needs more than a second of sound that is louder than -70 LUFS. It "
                   "is left out." };

    std::string bands;

    for (std::size_t band = 0; band < analysisBandCount; ++band)
        if (! std::isfinite (result.reading.bands[band]))
            bands += (bands.empty() ? "" : ", ") + std::to_string (static_cast<int> (analysisCentresHz[band]));

    if (! bands.empty())
        notes.push_back ("'" + result.path + "' is below -70 LUFS at " + bands
                         + " Hz, so the target asks for nothing there.");

    if (result.fileRate < lowestServedRate)
        notes.push_back ("'" + result.path + "' has " + std::to_string (std::lround (result.fileRate))
                         + " Hz, so what is measured above " + std::to_string (std::lround (0.5 * result.fileRate))
                         + " Hz is not in it, but made by the conversion.");

    return notes;
}
} // namespace

ReferenceReading measureReference (const ReferenceFile& file, std::optional<double> sessionRate, bool quiet)
{
    AudioInput input (file.path);

    if (sessionRate.has_value())
        requireConvertibleAudio (input, file.path);
    else
        requireServedAudio (input, file.path);

    ReferenceReading result;
    result.path = file.path;
    result.fileRate = input.sampleRate();
    result.sessionRate = sessionRate.value_or (result.fileRate);
    result.seconds = static_cast<double> (input.length()) / result.fileRate;

    ProgressBar progress ("Measuring " + file.path, quiet);
    ReferenceSamples samples (input, file.path, result.sessionRate);

    for (const auto& range : file.ranges)
        result.ranges.push_back (samplesOf (range, result.sessionRate, samples.count(), file.path));

    result.reading =
        analyseTrack ([&samples] (int start, int count) { return samples.at (start, count); },
                      samples.count(),
                      result.ranges,
                      { result.sessionRate, result.fileRate, decimationFactorFor (result.sessionRate).value_or (1) },
                      [&progress] (float percent)
                      {
                          Interrupt::throwIfRequested();
                          progress.show (static_cast<double> (percent) / 100.0);
                      });

    result.notes = input.notes ("'" + file.path + "'", samples.notFiniteCount());
    const auto more = notesOn (result);
    result.notes.insert (result.notes.end(), more.begin(), more.end());
    return result;
}
