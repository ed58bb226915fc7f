#include "core/references/ReferenceTrack.h"

#include <algorithm>
#include <utility>

ReferenceTrack::ReferenceTrack (Description description)
    : id (description.id),
      filePath (std::move (description.filePath)),
      displayName (std::move (description.displayName)),
      lengthInSamples (description.lengthInSamples),
      rates (description.rates),
      isStereo (description.isStereo),
      capacity (description.capacity),
      left (static_cast<std::size_t> (description.capacity), true),
      right (static_cast<std::size_t> (description.capacity), true),
      nameOfUser (displayName),
      ranges (std::move (description.loops)),
      points (std::make_shared<const Outline>())
{
}

juce::String ReferenceTrack::name() const
{
    const std::scoped_lock guard (lock);
    return nameOfUser;
}

void ReferenceTrack::setName (const juce::String& newName)
{
    const std::scoped_lock guard (lock);
    nameOfUser = newName;
}

std::vector<TrackLoop> ReferenceTrack::loops() const
{
    const std::scoped_lock guard (lock);
    return ranges;
}

void ReferenceTrack::setLoops (std::vector<TrackLoop> newLoops)
{
    const std::scoped_lock guard (lock);
    ranges = std::move (newLoops);
}

std::shared_ptr<const ReferenceTrack::Outline> ReferenceTrack::outline() const
{
    const std::scoped_lock guard (lock);
    return points;
}

void ReferenceTrack::rebuildOutline (int columns, float pixelsPerSample)
{
    if (! loaded.load (std::memory_order_acquire))
        return;

    auto built = std::make_shared<const Outline> (TrackOutline::build (levels, columns, pixelsPerSample, loops()));
    const std::scoped_lock guard (lock);
    points = std::move (built);
}

void ReferenceTrack::append (const float* newLeft, const float* newRight, int count)
{
    const auto held = numSamples.load (std::memory_order_relaxed);
    const auto fitting = std::min (count, capacity - held);

    if (fitting <= 0)
        return;

    std::copy_n (newLeft, fitting, left + held);
    std::copy_n (newRight, fitting, right + held);
    numSamples.store (held + fitting, std::memory_order_relaxed);
}

void ReferenceTrack::finishLoading (std::vector<float> trackLevels)
{
    levels = std::move (trackLevels);
    loaded.store (true, std::memory_order_release);
}

TrackSamples ReferenceTrack::samples() const noexcept
{
    return { left, isStereo ? right.get() : nullptr, numSamples.load (std::memory_order_relaxed) };
}

void ReferenceTrack::analyse (const std::function<void()>& tick)
{
    std::vector<TrackRange> parts;

    for (const auto& loop : loops())
        parts.push_back ({ loop.startSamples, loop.endSamples });

    {
        // Not the one of an earlier run, should this one end early.
        const std::scoped_lock guard (lock);
        lastReading = {};
        measuredParts.reset();
    }

    progress = 0.0f;
    auto result = analyseTrack (samples(),
                                parts,
                                rates,
                                [&] (float percent)
                                {
                                    progress = std::min (percent, 100.0f);
                                    tick();
                                });

    const std::scoped_lock guard (lock);
    lastReading = std::move (result);
    measuredParts = std::move (parts);
}

bool ReferenceTrack::isMeasuredAsMarked() const
{
    const auto isSame = [] (const TrackLoop& marked, const TrackRange& part)
    { return marked.startSamples == part.first && marked.endSamples == part.end; };

    const std::scoped_lock guard (lock);
    return measuredParts.has_value() && std::ranges::equal (ranges, *measuredParts, isSame);
}

TrackReading ReferenceTrack::reading() const
{
    const std::scoped_lock guard (lock);
    return lastReading;
}
