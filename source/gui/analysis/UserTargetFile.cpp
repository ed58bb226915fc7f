#include "gui/analysis/UserTargetFile.h"

#include "files/AtomicFile.h"
#include "files/OutputPlace.h"
#include "targets/TargetDocument.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>

namespace
{
/** Far more than any target takes. */
constexpr juce::int64 largestFile = 1 << 20;

Presets::Numbers userNumbers (const Presets::Library& presets)
{
    return presets.numbersOf (*presets.findPresetById (Presets::userSettingId));
}

TargetDocument::Track describe (const ReferenceTrack& track)
{
    TargetDocument::Track described;
    described.path = track.filePath.toStdString();
    described.fileRate = track.rates.file;
    described.sessionRate = track.rates.session;
    described.seconds = track.numSamples / track.rates.session;

    for (const auto& loop : track.loops())
        described.ranges.push_back ({ loop.startSamples, loop.endSamples });

    described.reading = track.reading();
    return described;
}

std::filesystem::path pathOf (const juce::File& file)
{
    return file.getFullPathName().toStdString();
}

juce::String nameOf (const juce::File& file)
{
    return "'" + file.getFileName() + "'";
}

bool write (const std::string& text, AtomicFile& place)
{
    auto stream = place.open();

    if (stream == nullptr || ! stream->write (text.data(), text.size()))
        return false;

    stream.reset();
    return place.commit();
}
} // namespace

bool UserTargetFile::isMadeOf (const Tracks& tracks, const Presets::Library& presets)
{
    if (tracks.empty()
        || ! std::ranges::all_of (tracks, [] (const auto& track) { return track->isMeasuredAsMarked(); }))
        return false;

    std::vector<TrackReading> readings;

    for (const auto& track : tracks)
        readings.push_back (track->reading());

    constexpr auto nothing = -std::numeric_limits<float>::infinity();
    MeanTarget none { .lufs = nothing, .values = {} };
    none.values.fill (nothing);
    const auto mean = MeanTarget::of (readings).value_or (none);
    const auto numbers = userNumbers (presets);
    return numbers.lufs == mean.lufs && numbers.values == mean.values;
}

UserTargetFile::Outcome
UserTargetFile::save (const juce::File& file, const Presets::Library& presets, const Tracks& tracks)
{
    const auto numbers = userNumbers (presets);

    if (! std::isfinite (numbers.lufs))
        return { false, "There is nothing to save: nothing could be measured." };

    std::vector<std::filesystem::path> spared;

    for (const auto& track : tracks)
        spared.emplace_back (track->filePath.toStdString());

    if (const auto refusal =
            OutputPlace::refusal (pathOf (file), OutputPlace::Kind::target, file.getFileName().toStdString(), spared);
        refusal.has_value())
        return { false, juce::String::fromUTF8 (refusal->c_str()) };

    TargetDocument document;
    document.name = file.getFileNameWithoutExtension().toStdString();
    document.target = { numbers.lufs, numbers.values };

    if (isMadeOf (tracks, presets))
        for (const auto& track : tracks)
            document.tracks.push_back (describe (*track));

    AtomicFile place (pathOf (file));

    if (! write (document.text(), place))
        return { false,
                 nameOf (file) + " could not be written: " + juce::String::fromUTF8 (place.reason().c_str()) + "." };

    return { true, "The target is saved in " + nameOf (file) + "." };
}

UserTargetFile::Outcome UserTargetFile::load (const juce::File& file, Presets::Library& presets)
{
    juce::MemoryBlock bytes;
    std::error_code error;

    // Whoever opens a pipe waits until somebody writes.
    if (! std::filesystem::is_regular_file (pathOf (file), error)
        || (file.getSize() <= largestFile && ! file.loadFileAsData (bytes)))
        return { false, nameOf (file) + " cannot be read." };

    // What is too large is left unread, and no target.
    const auto parsed = TargetDocument::parse ({ static_cast<const char*> (bytes.getData()), bytes.getSize() });

    if (const auto* refusal = std::get_if<TargetDocument::Refusal> (&parsed))
        return { false, nameOf (file) + " " + juce::String::fromUTF8 (refusal->reason.c_str()) + "." };

    const auto& target = std::get<TargetDocument> (parsed).target;
    presets.setUserSetting (target.lufs, target.values);
    return { true, "The target of " + nameOf (file) + " is set." };
}
