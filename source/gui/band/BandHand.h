#pragma once

#include "gui/band/BandCallbacks.h"
#include "gui/band/BandState.h"
#include "gui/band/BandZone.h"
#include "gui/band/FrequencyDrag.h"
#include "gui/band/GainDrag.h"
#include "gui/band/GainWheel.h"
#include "gui/band/GestureCount.h"
#include "gui/band/IBandSurroundings.h"
#include "gui/band/QDrag.h"

#include <atomic>

/** The hand on a band: what a press takes hold of, what its drag, the wheel and a key make of the values, and the
    gestures that the host hears of. It writes through the callbacks alone.

    Rows are the room's. Message thread, but for isWritingHere(). */
class BandHand
{
public:
    /** What a hand holds. An edge of a shelf is held, but does nothing. */
    enum class Hold
    {
        nothing,
        body,
        bodyWithCtrl,
        line,
        upperEdge,
        lowerEdge,
        shelfEdge
    };

    /** All three outlive the hand. */
    BandHand (const BandState& state, IBandSurroundings& surroundings, const BandCallbacks& callbacks);

    /** Ends the gestures that are still under way. */
    ~BandHand();

    BandHand (const BandHand&) = delete;
    BandHand& operator= (const BandHand&) = delete;

    /** Takes hold of a zone of a usable band; with ctrl of the whole band. */
    void press (BandZone zone, int row, bool ctrl);

    /** One event of the drag. */
    void dragTo (int row);

    /** Lets go and tells what was held. The gain's gesture goes on until endGesture(). */
    Hold release();

    [[nodiscard]] Hold held() const noexcept { return hold; }

    /** @param delta positive towards the back wall */
    void turnWheel (float delta, double timeMs);

    /** Every 20 ms: a resting hand draws the band the rest of the way. */
    void tick();

    /** False once nothing is left to be done in ticks. */
    [[nodiscard]] bool needsTicks() const noexcept;

    /** Writes a value at once, as a gesture of its own. */
    void setGain (float depth);
    void setQ (float q);
    void setFrequency (float frequencyHz);

    /** The gain goes to 0 dB. */
    void resetGain();

    void beginGesture (Settings::Parameter kind);
    void endGesture (Settings::Parameter kind);

    /** The band was put somewhere by something else than this hand: drag and wheel go on from there. */
    void bandMoved();

    /** True while the calling thread is within a callback of this hand: what changes now was its own doing. Any
        thread. */
    [[nodiscard]] bool isWritingHere() const noexcept;

private:
    class Writing;

    void dragBody (int row);
    void dragEdge (int row);
    void writeDragged (float depth);
    void writeDepth (float depth);
    void writeQ (float q);
    void writeRow (float row);
    void endWheelGesture();

    const BandState& band;
    IBandSurroundings& room;
    const BandCallbacks& callbacks;
    GestureCount gestures;
    GainDrag gainDrag;
    GainWheel wheel;
    QDrag qDrag;
    FrequencyDrag frequencyDrag;
    Hold hold = Hold::nothing;
    bool eventSinceTick = false;
    bool wheelGesture = false;
    std::atomic<void*> writer { nullptr };
};
