#pragma once

#include "gui/band/BandReadout.h"
#include "gui/band/IBandSurroundings.h"
#include "gui/band/SolvaneControlPanel.h"

/** The panel through which a band speaks: its own across its line, or, where that does not fit, one of the window's
    spare ones. Also what its read-out shows. Message thread. */
class PanelInUse
{
public:
    /** Who hears of what is done to the panel. */
    struct Listeners
    {
        IPanelOwner& owner;
        juce::Label::Listener& readout;
        juce::MouseListener& mouse;
    };

    /** All outlive this object. @param control becomes the own panel's parent */
    PanelInUse (juce::Component& control, const BandState& state, IBandSurroundings& surroundings, Listeners heard);

    /** Gives a borrowed panel back. */
    ~PanelInUse();

    PanelInUse (const PanelInUse&) = delete;
    PanelInUse& operator= (const PanelInUse&) = delete;

    [[nodiscard]] SolvaneControlPanel& get() noexcept;
    [[nodiscard]] const SolvaneControlPanel& get() const noexcept;
    [[nodiscard]] OverlapPanel borrowed() const noexcept { return borrowedKind; }

    /** Follows the band's layout: borrows, gives back, places. @param title of the band */
    void place (const juce::String& title, juce::Colour colour);

    /** Gives a borrowed panel back, as when the band goes. */
    void giveBack();

    /** Shows what the band is. */
    void refresh (juce::Colour colour);

    /** What the read-out speaks of; take refresh() afterwards. */
    void setQuantity (ReadoutQuantity shown) noexcept { readoutQuantity = shown; }
    [[nodiscard]] ReadoutQuantity quantity() const noexcept { return readoutQuantity; }

    /** Shows or hides the own panel; a borrowed one shows whenever nothing lies over the room.
        @param clear the panel, whichever it is, has to leave its place to what lies under it */
    void show (bool wanted, bool clear);

    /** One step of the own panel's fade. */
    void tick() { own.tick(); }
    [[nodiscard]] bool settled() const noexcept { return own.settled(); }

    [[nodiscard]] bool isTyping() const { return get().isTyping(); }

    /** The mouse is over a borrowed panel, which is no part of the control. */
    [[nodiscard]] bool borrowedIsUnderMouse() const;

private:
    void borrow (OverlapPanel kind, const juce::String& title, juce::Colour colour);
    void attach (SolvaneControlPanel& panel);
    void detach (SolvaneControlPanel& panel);

    const BandState& band;
    IBandSurroundings& room;
    const Listeners listeners;
    SolvaneControlPanel own;
    juce::Component::SafePointer<SolvaneControlPanel> spare;
    OverlapPanel borrowedKind = OverlapPanel::none;
    ReadoutQuantity readoutQuantity = ReadoutQuantity::gain;
};
