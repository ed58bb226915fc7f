#pragma once

#include "gui/band/BandKeys.h"
#include "gui/band/BandTyping.h"
#include "gui/band/MidSideLink.h"

#include <optional>

/** What buttons and keys do to a band, and when they may. Message thread. */
class BandActions
{
public:
    /** All outlive this object. */
    BandActions (const BandState& state,
                 const BandCallbacks& callbacks,
                 BandHand& writer,
                 BandTyping& typed,
                 MidSideLink& link);

    void toggleSolo();

    /** A soloed band is not bypassed, nor is anything while something else silences the band. */
    void toggleBypass();

    void toggleShelf();

    /** The band may be gone when this returns. */
    void close();

    /** One step of a value; the quantity that changed, or nothing if the band does not answer. */
    std::optional<ReadoutQuantity> step (const BandKey& key);

private:
    const BandState& band;
    const BandCallbacks& callbacks;
    BandHand& hand;
    BandTyping& typing;
    MidSideLink& midSide;
};
