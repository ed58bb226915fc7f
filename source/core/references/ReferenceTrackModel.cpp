#include "core/references/ReferenceTrackModel.h"

#include "core/references/TrackConversion.h"
#include "core/references/TrackLevels.h"

#include <algorithm>
#include <utility>

namespace
{
constexpr int channelCount = 2;

ReferenceTrackRequest requestOf (const ReferenceTrack& track)
{
    return { track.filePath, track.displayName, track.loops(), false };
}

bool exists (const juce::String& path)
{
    return juce::File::isAbsolutePath (path) && juce::File (path).exists();
}
} // namespace

//======================================================================================================================
/** For as long as a request is being served it stays on the list of those that a session keeps, unless it has become a
    track. */
class ReferenceTrackModel::ScopedService
{
public:
    explicit ScopedService (ReferenceTrackModel& modelToServe) : model (modelToServe) {}

    ~ScopedService()
    {
        {
            const std::scoped_lock lock (model.tracksLock);
            model.inLoad = nullptr;

            if (! becameTrack && ! model.unserved.empty())
                model.unserved.pop_front();
        }

        model.trackGone.notify_all();
    }

    ScopedService (const ScopedService&) = delete;
    ScopedService& operator= (const ScopedService&) = delete;

    void noteTrack() noexcept { becameTrack = true; }

private:
    ReferenceTrackModel& model;
    bool becameTrack = false;
};

//======================================================================================================================
ReferenceTrackModel::ReferenceTrackModel (Presets::Library& presetsToSet, TargetSet& targetToSet)
    : presets (presetsToSet),
      target (targetToSet),
      scratch (channelCount, TrackConversion::blockLength),
      loadQueue ([this] (const ReferenceTrackRequest& request) { addTrack (request); })
{
}

ReferenceTrackModel::~ReferenceTrackModel()
{
    loadQueue.requestStop();
    closing = true;

    {
        // Under the lock, or somebody could look before and wait after.
        const std::scoped_lock lock (tracksLock);
    }

    trackGone.notify_all();
    loadQueue.stop();
}

//======================================================================================================================
void ReferenceTrackModel::setSession (double rate, std::optional<int> newDecimation)
{
    // All in one: a session that is saved meanwhile finds every request, and one that is restored finds the rate.
    const std::scoped_lock lock (tracksLock);

    if (newDecimation.has_value())
        decimation = *newDecimation;

    sessionRate = rate;

    if (rate > 0.0)
        for (auto& request : std::exchange (kept, {}))
            push (std::move (request));
}

ReferenceTrackModel::Session ReferenceTrackModel::session() const
{
    const std::scoped_lock lock (tracksLock);
    return { sessionRate, decimation };
}

std::vector<ReferenceTrackRequest> ReferenceTrackModel::sessionTracks() const
{
    const std::scoped_lock lock (tracksLock);
    std::vector<ReferenceTrackRequest> result;

    for (const auto& track : list)
    {
        result.push_back (requestOf (*track));
        result.back().selected = track.get() == audition.selectedTrack();
    }

    result.insert (result.end(), unserved.begin(), unserved.end());
    result.insert (result.end(), kept.begin(), kept.end());

    // The track that is loaded last is the current one.
    if (result.size() > list.size())
        for (auto& request : result)
            request.selected = &request == &result.back();

    return result;
}

void ReferenceTrackModel::restore (std::vector<ReferenceTrackRequest> requests)
{
    const std::scoped_lock lock (tracksLock);

    for (auto& request : requests)
        if (sessionRate > 0.0)
            push (std::move (request));
        else
            kept.push_back (std::move (request));
}

void ReferenceTrackModel::forgetKeptRequests()
{
    const std::scoped_lock lock (tracksLock);
    kept.clear();
}

//======================================================================================================================
void ReferenceTrackModel::enqueue (ReferenceTrackRequest request)
{
    const std::scoped_lock lock (tracksLock);
    push (std::move (request));
}

void ReferenceTrackModel::push (ReferenceTrackRequest request)
{
    // Both under one lock, or two threads could be served in another order than they are kept in.
    unserved.push_back (request);
    loadQueue.push (std::move (request));
}

std::vector<ReferenceTrackModel::TrackPtr> ReferenceTrackModel::tracks() const
{
    const std::scoped_lock lock (tracksLock);
    return list;
}

ReferenceTrackModel::TrackPtr ReferenceTrackModel::findTrack (juce::int64 id) const
{
    const std::scoped_lock lock (tracksLock);
    const auto found = std::ranges::find (list, id, [] (const TrackPtr& track) { return track->id; });
    return found != list.end() ? *found : nullptr;
}

ReferenceTrackModel::TrackPtr ReferenceTrackModel::selectedTrack() const
{
    const std::scoped_lock lock (tracksLock);
    const auto* selected = audition.selectedTrack();
    const auto found = std::ranges::find (list, selected, [] (const TrackPtr& track) { return track.get(); });
    return found != list.end() ? *found : nullptr;
}

void ReferenceTrackModel::selectTrack (juce::int64 id)
{
    const std::scoped_lock lock (tracksLock);
    const auto found = std::ranges::find (list, id, [] (const TrackPtr& track) { return track->id; });

    if (found != list.end())
        audition.select (found->get());
}

void ReferenceTrackModel::removeSelectedTrack()
{
    TrackPtr removed;

    {
        std::unique_lock lock (tracksLock);
        const auto place = [this] {
            return std::ranges::find (
                list, audition.selectedTrack(), [] (const TrackPtr& track) { return track.get(); });
        };

        if (place() == list.end())
            return;

        // Held, since the list may change while the load ends.
        removed = *place();
        removed->abort = true;
        trackGone.wait (lock, [&] { return inLoad != removed.get() || closing; });
        std::erase (list, removed);
        audition.select (list.empty() ? nullptr : list.back().get());
    }

    audition.waitUntilUnused();

    if (onTrackRemoved)
        onTrackRemoved (removed->id);
}

//======================================================================================================================
void ReferenceTrackModel::addTrack (const ReferenceTrackRequest& request)
{
    ScopedService service (*this);
    const auto [rate, decimationOfRate] = session();
    const auto stem = TrackFile::stemOf (request.filePath);

    if (rate <= 0.0)
        return say (Messages::noSessionRate);

    if (! isWanted (request))
        return;

    if (! exists (request.filePath))
        return say (Messages::fileNotFound, stem);

    const auto reader = files.open (juce::File (request.filePath), [this] { return ! closing; });

    if (reader == nullptr)
        return;

    const auto capacity = TrackConversion::sampleCountFor (reader->lengthInSamples, reader->sampleRate, rate);

    if (! capacity.has_value())
        return;

    say (Messages::loading, stem);

    if (static_cast<double> (reader->lengthInSamples) < reader->sampleRate)
        return;

    const auto track = std::make_shared<ReferenceTrack> (ReferenceTrack::Description {
        .id = TrackLoop::makeId(),
        .filePath = request.filePath,
        .displayName = stem,
        .lengthInSamples = reader->lengthInSamples,
        .capacity = *capacity,
        .rates = { .session = rate, .file = reader->sampleRate, .decimation = decimationOfRate },
        .isStereo = reader->numChannels == 2,
        .loops = request.loops });

    if (! append (track))
        return;

    service.noteTrack();
    say (Messages::initialLoadComplete, juce::String (track->id));
    load (*track, *reader);
    rebuildOutline (*track);

    if (track->abort)
        say (Messages::terminated);
    else
        say (Messages::waveformComplete, juce::String (track->id));
}

bool ReferenceTrackModel::isWanted (const ReferenceTrackRequest& request) const
{
    const std::scoped_lock lock (tracksLock);

    if (list.size() >= trackLimit)
        return false;

    // A request without a name comes from the user, who may want a file twice.
    return request.displayName.isEmpty()
           || std::ranges::none_of (list, [&] (const TrackPtr& track) { return track->name() == request.displayName; });
}

bool ReferenceTrackModel::append (const TrackPtr& track)
{
    const std::scoped_lock lock (tracksLock);

    if (list.size() >= trackLimit)
        return false;

    list.push_back (track);
    audition.select (track.get());
    inLoad = track.get();

    // It was the first of those that wait, and from now on stands in the list.
    if (! unserved.empty())
        unserved.pop_front();

    return true;
}

void ReferenceTrackModel::load (ReferenceTrack& track, juce::AudioFormatReader& reader)
{
    juce::AudioFormatReaderSource source (&reader, false);
    TrackConversion conversion (
        source, track.lengthInSamples, track.rates.file, track.rates.session, scratch.getNumChannels());
    TrackLevels levels (conversion.expectedLength());
    scratch.clear();

    while (! track.abort && ! closing)
    {
        const auto count = conversion.take (scratch);

        if (count == 0)
            break;

        track.append (scratch.getReadPointer (0), scratch.getReadPointer (1), count);
        levels.take (scratch.getReadPointer (0), scratch.getReadPointer (1), count);
    }

    track.finishLoading (levels.finish());
}

void ReferenceTrackModel::rebuildOutline (ReferenceTrack& track) const
{
    track.rebuildOutline (waveformWidth / TrackOutline::columnStep, pixelsPerSample);
}

void ReferenceTrackModel::createTargets (const TargetCreation::Progress& progress)
{
    auto all = tracks();

    // The samples of the others are still being written: a session may bring a track at any moment.
    std::erase_if (all, [] (const TrackPtr& track) { return ! track->loaded.load (std::memory_order_acquire); });

    if (all.empty())
        progress (100);
    else
        creation.run (std::move (all), progress, presets, target);
}

void ReferenceTrackModel::say (const char* message, const juce::String& argument)
{
    sendActionMessage (message + argument);
}
