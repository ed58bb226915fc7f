#include "core/references/TargetCreation.h"

#include "targets/MeanTarget.h"

#include <limits>
#include <thread>

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
    }

    report (100);
}

void TargetCreation::measure (const Progress& report)
{
    std::vector<std::thread> threads;

    for (const auto& track : measured)
        threads.emplace_back (
            [this, &report, &track]
            {
                track->analyse ([&] { report (static_cast<int> (track->progress)); });
                const std::scoped_lock guard (lock);
                ++finished;
            });

    for (auto& thread : threads)
        thread.join();
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
    TargetProgress result { .finished = finished,
                            .trackCount = static_cast<int> (measured.size()),
                            .complete = complete,
                            .unmeasured = unmeasured };
    auto sum = 0.0f;

    for (const auto& track : measured)
        sum += track->progress;

    if (! measured.empty())
        result.percent = static_cast<int> (sum / static_cast<float> (measured.size()));

    return result;
}
