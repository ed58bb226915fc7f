#pragma once

#include "core/session/ReferenceTrackRequest.h"

#include <vector>

/** The reference tracks as a session sees them. Any thread but the audio thread. */
class IReferenceTracks
{
public:
    virtual ~IReferenceTracks() = default;

    /** All that a session keeps: the tracks in their order, then what still waits to be loaded. */
    [[nodiscard]] virtual std::vector<ReferenceTrackRequest> sessionTracks() const = 0;

    /** Asks for the tracks of a session. */
    virtual void restore (std::vector<ReferenceTrackRequest> requests) = 0;

    /** Forgets what waits for the first session rate. */
    virtual void forgetKeptRequests() = 0;
};
