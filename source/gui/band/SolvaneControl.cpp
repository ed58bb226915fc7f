#include "gui/band/SolvaneControl.h"

#include "gui/band/BandCursor.h"
#include "gui/band/BandPainter.h"
#include "gui/band/BandRoom.h"
#include "gui/band/BandText.h"
#include "gui/look/Palette.h"
#include "gui/look/Tips.h"

#include <algorithm>
#include <utility>

namespace
{
bool isOn (float value) noexcept
{
    return value >= 0.5f;
}
} // namespace

SolvaneControl::SolvaneControl (int band, juce::Colour bandColour, IBandSurroundings& room)
    : surroundings (room),
      colour (bandColour),
      state (band),
      hand (state, room, *this),
      typing (state, room, *this, hand),
      midSide (state, room),
      actions (state, *this, hand, typing, midSide),
      panels (*this, state, room, { *this, *this, *this }),
      inbox (band, [this] (Kind kind, float value) { take (kind, value); })
{
    const auto name = "Band " + juce::String (band + 1);
    setName (name);
    setTitle (name);
    setWantsKeyboardFocus (true);
    panel().setBand (band, name, state.gainDb, colour, state.upperHalf);
    refresh();
    refreshVisibility();
    fade.jump();
    surroundings.rebuildOverlapPanels();
}

SolvaneControl::~SolvaneControl()
{
    stopTimer();
    panel().closeEditor();
    panels.giveBack();
    surroundings.rebuildOverlapPanels();
}

//======================================================================================================================
// Values

void SolvaneControl::setGain (float gainDb, bool notify)
{
    state.gainDb = gainDb;
    updateBounds();

    if (! hand.isWritingHere())
        hand.bandMoved();

    refresh();

    if (notify)
        onGain (state.band, state.depth);
}

void SolvaneControl::setQ (float q)
{
    const auto allowed = std::clamp (surroundings.gainLimits().limitQ (q), Settings::lowestQ, Settings::highestQ);

    if (std::exchange (state.q, allowed) == allowed)
        return;

    updateBounds();

    if (! state.highShelf && (selected || hoverQ))
        panels.setQuantity (ReadoutQuantity::q);

    refresh();
}

void SolvaneControl::setFrequency (float frequencyHz)
{
    state.frequencyHz = static_cast<int> (frequencyHz);
    state.upperHalf = state.frequencyHz >= BandRoom::shelfFromHz;
    updateBounds();
    refresh();
}

void SolvaneControl::setMidSide (float value, bool notify)
{
    if (notify && midSide.write (value))
        return;

    state.midSide = value;
    midSide.follow();
    refresh();
    repaint();
}

void SolvaneControl::setFlag (bool& flag, bool value)
{
    if (std::exchange (flag, value) == value)
        return;

    refresh();
    repaint();
}

void SolvaneControl::setHighShelf (bool on)
{
    setFlag (state.highShelf, on);
    updateBounds();
}

void SolvaneControl::parameterChanged (const juce::String& parameterId, float value)
{
    const auto index = inbox.indexOf (parameterId);

    if (index < 0 || ! surroundings.isActive (state.band))
        return;

    if (hand.isWritingHere())
        take (listenedKinds[static_cast<std::size_t> (index)], value);
    else
        inbox.post (index, value);
}

void SolvaneControl::take (Kind kind, float value)
{
    switch (kind)
    {
        case Kind::gain:
            return setGain (value);
        case Kind::q:
            return setQ (value);
        case Kind::solo:
            return setSolo (isOn (value));
        case Kind::bypass:
            return setBypass (isOn (value));
        case Kind::highShelf:
            return setHighShelf (isOn (value));
        case Kind::midSide:
            return setMidSide (value);
        case Kind::frequency:
        case Kind::active:
            break;
    }
}

//======================================================================================================================
// Place and looks

void SolvaneControl::updateBounds()
{
    const auto room = surroundings.geometry();
    state.depth = depthOfGain (state.gainDb, room.scaleDb);

    if (state.frequencyHz == 0 || state.q <= 0.0f)
        return;

    state.edges = bandEdges (state.frequencyHz, state.q, state.highShelf);
    state.layout = layOutBand (room, { state.frequencyHz, state.gainDb, state.edges });
    setBounds (state.layout.bounds);
    panels.place (getTitle(), baseColour());
    refreshVisibility();
    repaint();
}

juce::Colour SolvaneControl::baseColour() const
{
    return state.usable() ? colour : juce::Colour (Palette::markerFrame);
}

void SolvaneControl::refresh()
{
    panels.refresh (baseColour());
    setDescription (BandText::ofFrequency (state.frequencyHz) + ", " + BandText::ofGain (state.gainDb) + ", "
                    + BandText::ofQ (state.q));
}

void SolvaneControl::showQuantity (ReadoutQuantity quantity)
{
    panels.setQuantity (quantity);
    refresh();
}

void SolvaneControl::refreshVisibility()
{
    const auto bright = selected || surroundings.bandsAlwaysShown();
    fade.setBright (bright);
    panels.show (bright, panelHidden);
    startTicks();
}

void SolvaneControl::setPanelHidden (bool hidden)
{
    if (std::exchange (panelHidden, hidden) != hidden)
        refreshVisibility();
}

void SolvaneControl::setSelected (bool on)
{
    selected = on;

    if (on)
    {
        panelHidden = false;
        showMidSide();
    }
    else
    {
        hoverNothing();
        midSide.hide();
    }

    refreshVisibility();
    repaint();
}

void SolvaneControl::collapse()
{
    panel().closeEditor();
    setSelected (false);
    setCtrlHover (false);
}

void SolvaneControl::showMidSide()
{
    midSide.show (
        panel(),
        panels.borrowed() == OverlapPanel::upper,
        [target = self] (bool inUse)
        {
            if (target != nullptr)
                target->showQuantity (inUse ? ReadoutQuantity::midSide : ReadoutQuantity::gain);
        },
        [target = self]
        {
            if (target != nullptr && ! target->pointerIsHere())
                target->leave();
        });
}

void SolvaneControl::startTicks()
{
    if (! isTimerRunning())
        startTimer (BandFade::tickMs);
}

void SolvaneControl::timerCallback()
{
    hand.tick();

    if (fade.tick())
        repaint();

    panels.tick();

    if (fade.settled() && panels.settled() && ! hand.needsTicks())
        stopTimer();
}

void SolvaneControl::paint (juce::Graphics& g)
{
    BandLook look;
    look.colour = baseColour();
    look.depth = state.depth;
    look.fade = fade.amount();
    look.midSideShown = surroundings.stereo();
    look.midSide = state.midSide;
    look.highShelf = state.highShelf;
    look.lineHot = (hoverLine || hand.held() == BandHand::Hold::line) && state.usable();
    look.ctrlHover = ctrlHover;
    look.handlesShown = selected;
    look.handlesHot = hoverQ;
    look.dots = state.layout.outOfScale && ! surroundings.scaleAnimating();
    look.overDot = overDot;
    paintBand (g, state.layout, state.edges, look);
}

juce::String SolvaneControl::getTooltip()
{
    return Tips::text (hoverQ ? Tips::bandQ : hoverLine ? Tips::bandFrequency : Tips::bandControl);
}

//======================================================================================================================
// Hover

bool SolvaneControl::hitTest (int x, int y)
{
    // A band that is out of scale leaves the room between its dots to the others.
    return ! state.layout.outOfScale || hoveredZone (state.layout, { x, y }) == BandZone::dot;
}

bool SolvaneControl::pointerIsHere() const
{
    return isMouseOver (true) || panels.borrowedIsUnderMouse() || midSide.isInUse();
}

void SolvaneControl::becomeMeant()
{
    panelHidden = false;

    if (! selected && ! state.layout.outOfScale)
        onClicked (state.band);
}

void SolvaneControl::leave()
{
    hoverNothing();

    if (! panels.isTyping())
        onLeft();
}

void SolvaneControl::mouseEnter (const juce::MouseEvent&)
{
    becomeMeant();
}

void SolvaneControl::mouseExit (const juce::MouseEvent&)
{
    if (! pointerIsHere())
        leave();
}

void SolvaneControl::mouseMove (const juce::MouseEvent& event)
{
    if (! isOwnEvent (event))
        return;

    const auto zone = hoveredZone (state.layout, event.getPosition());

    if (state.layout.outOfScale)
    {
        setMouseCursor (cursorFor (zone, state));
        return setFlag (overDot, zone == BandZone::dot);
    }

    if (! event.mods.isCtrlDown())
        hover (zone);

    onMouseMove (state.band, event.getPosition() + getPosition());
}

void SolvaneControl::hover (BandZone zone)
{
    setMouseCursor (cursorFor (zone, state));
    setFlag (hoverQ, zone == BandZone::topEdge || zone == BandZone::bottomEdge);
    setFlag (hoverLine, zone == BandZone::line);
    showQuantity (quantityOf (zone));
}

void SolvaneControl::hoverNothing()
{
    setFlag (hoverQ, false);
    setFlag (hoverLine, false);
    setFlag (overDot, false);
    showQuantity (ReadoutQuantity::gain);
}

ReadoutQuantity SolvaneControl::quantityOf (BandZone zone) const
{
    if (zone == BandZone::line)
        return ReadoutQuantity::frequency;

    // A shelf has a Q, but no edges that would show it: the read-out keeps the gain.
    const auto onEdge = zone == BandZone::topEdge || zone == BandZone::bottomEdge;
    return onEdge && ! state.highShelf ? ReadoutQuantity::q : ReadoutQuantity::gain;
}

//======================================================================================================================
// Mouse

int SolvaneControl::rowOf (const juce::MouseEvent& event) const
{
    return getLocalPoint (event.eventComponent, event.position).roundToInt().y + getY();
}

void SolvaneControl::mouseDown (const juce::MouseEvent& event)
{
    if (! isOwnEvent (event) || state.layout.outOfScale || event.mods.isRightButtonDown()
        || event.mods.isMiddleButtonDown())
        return;

    panel().closeEditor();
    onClicked (state.band);

    if (! state.usable())
        return;

    const auto zone = pressedZone (state.layout, event.getPosition());
    hand.press (zone, rowOf (event), event.mods.isCtrlDown());

    if (! event.mods.isCtrlDown())
        showQuantity (quantityOf (zone));

    startTicks();
    repaint();
}

void SolvaneControl::mouseDrag (const juce::MouseEvent& event)
{
    if (isOwnEvent (event) && ! state.layout.outOfScale && state.usable() && ! panels.isTyping())
        hand.dragTo (rowOf (event));
}

void SolvaneControl::mouseUp (const juce::MouseEvent& event)
{
    if (! isOwnEvent (event))
        return;

    overDot = false;

    if (state.layout.outOfScale && hand.held() == BandHand::Hold::nothing)
    {
        if (pressedZone (state.layout, event.getPosition()) != BandZone::dot)
            return;

        state.layout.outOfScale = false;
        ctrlHover = false;
        repaint();
        return onCollapse (-1, false);
    }

    const auto released = hand.release();

    if (released == BandHand::Hold::body || released == BandHand::Hold::bodyWithCtrl)
        releaseBody (event);

    if (! event.mods.isCtrlDown() && contains (event.getPosition()))
        hover (hoveredZone (state.layout, event.getPosition()));

    repaint();
}

void SolvaneControl::releaseBody (const juce::MouseEvent& event)
{
    const auto point = event.getPosition() + getPosition();

    if (state.usable() && ! state.solo)
    {
        if (event.mods.isAltDown())
            hand.resetGain();
        else
            onCtrlClick (state.band, point.x, point.y);
    }

    hand.endGesture (Kind::gain);
}

void SolvaneControl::mouseDoubleClick (const juce::MouseEvent& event)
{
    if (! isOwnEvent (event) || state.layout.outOfScale)
        return;

    const auto zone = pressedZone (state.layout, event.getPosition());

    if (event.mods.isShiftDown() && zone == BandZone::body)
        return onAddBandHere != nullptr ? onAddBandHere (event.getPosition() + getPosition()) : void();

    if (! state.usable() || state.solo)
        return;

    switch (zone)
    {
        case BandZone::line:
            return openTyping (ReadoutQuantity::frequency);
        case BandZone::topEdge:
        case BandZone::bottomEdge:
            return openTyping (ReadoutQuantity::q);
        case BandZone::body:
            return hand.resetGain();
        case BandZone::dot:
        case BandZone::none:
            break;
    }
}

void SolvaneControl::mouseWheelMove (const juce::MouseEvent& event, const juce::MouseWheelDetails& wheel)
{
    if (! isOwnEvent (event) || state.solo || state.layout.outOfScale || ! state.usable() || wheel.deltaY == 0.0f)
        return;

    const auto delta = surroundings.wheelReversed() ? -wheel.deltaY : wheel.deltaY;
    hand.turnWheel (delta, static_cast<double> (event.eventTime.toMilliseconds()));
    showQuantity (ReadoutQuantity::gain);
    startTicks();
}

//======================================================================================================================
// Keyboard

void SolvaneControl::focusGained (FocusChangeType cause)
{
    if (cause != focusChangedByMouseClick)
        becomeMeant();
}

void SolvaneControl::focusLost (FocusChangeType)
{
    if (! panels.isTyping() && ! pointerIsHere())
        leave();
}

bool SolvaneControl::keyPressed (const juce::KeyPress& key)
{
    const auto wanted = bandKeyOf (key);

    if (wanted.action == BandKey::Action::none)
        return false;

    becomeMeant();
    act (wanted);
    return true;
}

void SolvaneControl::act (const BandKey& key)
{
    using Action = BandKey::Action;

    switch (key.action)
    {
        case Action::toggleSolo:
            return actions.toggleSolo();
        case Action::toggleBypass:
            return actions.toggleBypass();
        case Action::toggleShelf:
            return actions.toggleShelf();
        case Action::remove:
            return actions.close();
        case Action::typeGain:
            return openTyping (ReadoutQuantity::gain);
        case Action::typeFrequency:
            return openTyping (ReadoutQuantity::frequency);
        case Action::typeQ:
            return openTyping (ReadoutQuantity::q);
        case Action::leave:
            leave();
            return giveAwayKeyboardFocus();
        case Action::gain:
        case Action::frequency:
        case Action::q:
        case Action::midSide:
            return stepBy (key);
        case Action::none:
            break;
    }
}

void SolvaneControl::stepBy (const BandKey& key)
{
    if (key.action == BandKey::Action::midSide)
        showMidSide();

    if (const auto changed = actions.step (key))
        showQuantity (*changed);
}

//======================================================================================================================
// Panel

void SolvaneControl::openTyping (ReadoutQuantity quantity)
{
    if (! state.usable() || state.solo)
        return;

    showQuantity (quantity);
    panel().openEditor();
}

void SolvaneControl::editorShown (juce::Label*, juce::TextEditor& editor)
{
    typing.begin (panels.quantity(), editor);
    refreshVisibility();
}

void SolvaneControl::labelTextChanged (juce::Label* label)
{
    panel().holdText (false);
    typing.take (label->getText());
    refresh();
}

void SolvaneControl::editorHidden (juce::Label*, juce::TextEditor&)
{
    // What was typed arrives after this; only then is the band left, or does the keyboard come back to it.
    panel().holdText (true);
    juce::MessageManager::callAsync (
        [target = self]
        {
            if (target != nullptr && ! target->panels.isTyping())
                target->leaveOnceTyped();
        });
}

void SolvaneControl::leaveOnceTyped()
{
    panel().holdText (false);
    refresh();

    if (isShowing() && juce::Component::getCurrentlyFocusedComponent() == nullptr)
        grabKeyboardFocus();

    if (! hasKeyboardFocus (true) && ! pointerIsHere())
        leave();

    refreshVisibility();
}
