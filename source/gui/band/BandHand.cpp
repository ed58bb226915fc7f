#include "gui/band/BandHand.h"

#include <juce_core/juce_core.h>

#include <cmath>
#include <utility>

using Kind = Settings::Parameter;

namespace
{
constexpr float middleDepth = 0.5f;

float normalised (float q) noexcept
{
    return (q - Settings::lowestQ) / (Settings::highestQ - Settings::lowestQ);
}
} // namespace

/** Marks that the calling thread writes. */
class BandHand::Writing
{
public:
    explicit Writing (BandHand& hand) noexcept : owner (hand), before (hand.writer.load (std::memory_order_relaxed))
    {
        owner.writer.store (juce::Thread::getCurrentThreadId(), std::memory_order_relaxed);
    }

    ~Writing() { owner.writer.store (before, std::memory_order_relaxed); }

    Writing (const Writing&) = delete;
    Writing& operator= (const Writing&) = delete;

private:
    BandHand& owner;
    void* const before;
};

BandHand::BandHand (const BandState& state, IBandSurroundings& surroundings, const BandCallbacks& bound)
    : band (state), room (surroundings), callbacks (bound)
{
}

BandHand::~BandHand()
{
    for (const auto kind : { Kind::frequency, Kind::gain, Kind::q })
        if (gestures.endAll (kind))
            callbacks.onGestureEnd (band.band, kind);
}

bool BandHand::isWritingHere() const noexcept
{
    return writer.load (std::memory_order_relaxed) == juce::Thread::getCurrentThreadId();
}

//======================================================================================================================
void BandHand::beginGesture (Kind kind)
{
    if (gestures.begin (kind))
        callbacks.onGestureBegin (band.band, kind);
}

void BandHand::endGesture (Kind kind)
{
    if (gestures.end (kind))
        callbacks.onGestureEnd (band.band, kind);
}

void BandHand::press (BandZone zone, int row, bool ctrl)
{
    wheel.bandMoved();
    endWheelGesture();

    if (ctrl)
    {
        hold = Hold::bodyWithCtrl;
        beginGesture (Kind::gain);
        return;
    }

    switch (zone)
    {
        case BandZone::line:
            hold = Hold::line;
            frequencyDrag.begin();
            beginGesture (Kind::frequency);
            break;

        case BandZone::topEdge:
        case BandZone::bottomEdge:
            if (band.highShelf)
            {
                hold = Hold::shelfEdge;
                break;
            }

            hold = zone == BandZone::topEdge ? Hold::upperEdge : Hold::lowerEdge;
            qDrag.begin (zone == BandZone::topEdge ? QDrag::Edge::upper : QDrag::Edge::lower, row);
            beginGesture (Kind::q);
            break;

        case BandZone::body:
            if (band.solo)
                break;

            hold = Hold::body;

            // A scale that changed before the press has nothing to take over.
            room.takeRebase();
            gainDrag.begin (band.depth, row);
            beginGesture (Kind::gain);
            break;

        case BandZone::none:
        case BandZone::dot:
            break;
    }
}

BandHand::Hold BandHand::release()
{
    const auto released = std::exchange (hold, Hold::nothing);

    if (released == Hold::line)
        endGesture (Kind::frequency);

    if (released == Hold::upperEdge || released == Hold::lowerEdge)
        endGesture (Kind::q);

    return released;
}

//======================================================================================================================
void BandHand::dragTo (int row)
{
    eventSinceTick = true;

    switch (hold)
    {
        case Hold::line:
            frequencyDrag.dragTo (static_cast<float> (row));
            writeRow (static_cast<float> (row));
            break;

        case Hold::upperEdge:
        case Hold::lowerEdge:
            dragEdge (row);
            break;

        case Hold::body:
            dragBody (row);
            break;

        case Hold::nothing:
        case Hold::bodyWithCtrl:
        case Hold::shelfEdge:
            break;
    }
}

void BandHand::dragBody (int row)
{
    if (band.solo || room.scaleAnimating())
        return;

    if (room.takeRebase())
        gainDrag.begin (band.depth, row);

    writeDragged (gainDrag.dragTo (row));
}

void BandHand::dragEdge (int row)
{
    const auto& bounds = band.layout.bounds;
    const QDrag::Band dragged { band.frequencyHz, band.gainDb, band.edges, bounds.getY(), bounds.getHeight() };
    const auto q = qDrag.dragTo (room.geometry(), dragged, row);

    if (! q)
        return;

    if (std::abs (*q) > Settings::masterQLimit)
        room.masterExceeded();

    writeQ (*q);
}

void BandHand::turnWheel (float delta, double timeMs)
{
    if (! std::exchange (wheelGesture, true))
        beginGesture (Kind::gain);

    eventSinceTick = true;
    writeDepth (wheel.turn (band.depth, delta, timeMs, room.gainLimits()));
}

void BandHand::tick()
{
    if (std::exchange (eventSinceTick, false))
        return;

    if (hold == Hold::body && band.usable() && ! band.solo && ! room.scaleAnimating())
    {
        // What was on its way would be another gain in the new scale.
        if (room.takeRebase())
            gainDrag.bandMoved (band.depth);

        if (const auto depth = gainDrag.rest())
            writeDragged (*depth);
    }

    if (hold == Hold::line && band.usable())
        if (const auto row = frequencyDrag.rest (band.frequencyHz))
            writeRow (*row);

    if (const auto depth = wheel.rest (room.gainLimits()))
        writeDepth (*depth);
    else
        endWheelGesture();
}

bool BandHand::needsTicks() const noexcept
{
    return hold == Hold::body || hold == Hold::line || wheelGesture;
}

void BandHand::endWheelGesture()
{
    if (std::exchange (wheelGesture, false))
        endGesture (Kind::gain);
}

void BandHand::bandMoved()
{
    if (hold == Hold::body)
        gainDrag.bandMoved (band.depth);

    wheel.bandMoved();
}

//======================================================================================================================
void BandHand::setGain (float depth)
{
    wheel.bandMoved();
    beginGesture (Kind::gain);
    writeDepth (depth);
    endGesture (Kind::gain);
}

void BandHand::setQ (float q)
{
    beginGesture (Kind::q);
    writeQ (q);
    endGesture (Kind::q);
}

void BandHand::setFrequency (float frequencyHz)
{
    beginGesture (Kind::frequency);
    callbacks.onFrequency (band.band, frequencyHz, false);
    endGesture (Kind::frequency);
}

void BandHand::resetGain()
{
    setGain (middleDepth);
}

void BandHand::writeDragged (float depth)
{
    const auto limits = room.gainLimits();

    if (limits.exceedsMaster (gainAtDepth (depth, limits.scaleDb)))
        room.masterExceeded();

    writeDepth (limits.limitDepth (depth));
}

void BandHand::writeDepth (float depth)
{
    const Writing writing (*this);
    callbacks.onGain (band.band, depth);
}

void BandHand::writeQ (float q)
{
    const Writing writing (*this);
    callbacks.onQ (band.band, normalised (room.gainLimits().limitQ (q)));
}

void BandHand::writeRow (float row)
{
    callbacks.onFrequency (band.band, row, true);
}
