#pragma once

/** What a hand at the transport of a reference track does: a click plays and pauses, and a click far from what is
    playing goes there and plays on. Knows no component. */
class TransportClicks
{
public:
    /** While a track plays, a click that goes further than this is a jump and pauses nothing. In samples. */
    static constexpr double jumpThreshold = 100000.0;

    /** The hand comes down. */
    void press() noexcept { jumped = false; }

    /** The transport's value has changed.
        @param value 0 to 1 of the track
        @returns the new position in samples */
    [[nodiscard]] int moveTo (double value, int numSamples, int playPosition) noexcept;

    /** The hand has let go without a drag. @returns whether the track plays from now on */
    [[nodiscard]] bool click (bool playing) noexcept;

private:
    /** This was a jump, and not a click on the symbol. */
    bool jumped = false;
};
