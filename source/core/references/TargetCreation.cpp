#include "core/references/TargetCreation.h"

#include "targets/MeanTarget.h"

#include <limits>
#include <new>
#include <system_error>
#include <thread>
#include <utility>

namespace
{
constexpr auto nothing = -std::numeric_limits<float>::infinity();
}

void TargetCreation::run (std::vector<std::shared_ptr<ReferenceTrack>> tracks,
                          const Progress& report,
                          Presets::Library& presets,
                          TargetSet& target)
{
    {
        const std::scoped_lock guard (lock);
        measured = std::move (tracks);
        trackCount = static_cast<int> (measured.size());
        finished = 0;
        complete = false;
        unmeasured.clear();

        for (const auto& track : measured)
            track->progress = 0.0f;
    }

    measure (report);
    setTarget (presets, target);

    {
        const std::scoped_lock guard (lock);
        complete = true;
        lastPercent = meanPercent();
        tracks = std::exchange (measured, {});
    }

    report (100);
}

void TargetCreation::measure (const Progress& report)
{
    std::vector<std::jthread> threads;

    for (const auto& track : measured)
    {
        try
        {
            threads.emplace_back ([&] { measureTrack (*track, report); });
        }
        catch (const std::system_error&)
        {
            // The system has no thread left; this one has time.
            measureTrack (*track, report);
        }
    }
}

void TargetCreation::measureTrack (ReferenceTrack& track, const Progress& report)
{
    try
    {
        track.analyse ([&] { report (static_cast<int> (track.progress)); });
    }
    catch (const std::bad_alloc&)
    {
        // It stays without a reading, and is named among those that have none.
        track.progress = 100.0f;
    }

    const std::scoped_lock guard (lock);
    ++finished;
}

void TargetCreation::setTarget (Presets::Library& presets, TargetSet& target)
{
    std::vector<TrackReading> readings;

    for (const auto& track : measured)
    {
        readings.push_back (track->reading());

        if (! readings.back().exists)
        {
            const std::scoped_lock guard (lock);
            unmeasured.push_back (track->name());
        }
    }

    MeanTarget none { .lufs = nothing };
    none.values.fill (nothing);
    const auto mean = MeanTarget::of (readings).value_or (none);

    presets.setUserSetting (mean.lufs, mean.values);
    const auto numbers = presets.numbersOf (*presets.findPresetById (Presets::userSettingId));
    target.set (numbers.lufs, numbers.values, numbers.topBand);
}

TargetProgress TargetCreation::progress() const
{
    const std::scoped_lock guard (lock);
    return { .finished = finished,
             .trackCount = trackCount,
             .percent = complete ? lastPercent : meanPercent(),
             .complete = complete,
             .unmeasured = unmeasured };
}

int TargetCreation::meanPercent() const
{
    auto sum = 0.0f;

    for (const auto& track : measured)
        sum += track->progress;

    return measured.empty() ? 0 : static_cast<int> (sum / static_cast<float> (measured.size()));
}
