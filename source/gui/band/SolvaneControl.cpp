#include "gui/band/SolvaneControl.h"

#include "core/parameters/ParameterTable.h"
#include "gui/band/BandRoom.h"
#include "gui/band/BandText.h"
#include "gui/band/BandTips.h"
#include "gui/band/MidSideControlPanel.h"
#include "gui/band/TypedGain.h"
#include "gui/look/Palette.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
bool isOn (float value) noexcept
{
    return value >= 0.5f;
}
} // namespace

SolvaneControl::SolvaneControl (int band, juce::Colour bandColour, IBandSurroundings& room)
    : surroundings (room), colour (bandColour), state (band), hand (state, room, *this)
{
    const auto name = "Band " + juce::String (band + 1);
    setName (name);
    setTitle (name);
    setWantsKeyboardFocus (true);

    for (std::size_t index = 0; index < listenedKinds.size(); ++index)
        listenedIds[index] = ParameterIds::ofBand (band, listenedKinds[index]);

    addChildComponent (ownPanel);
    attachPanel (ownPanel);
    refreshVisibility();
    fade.jump();
    surroundings.rebuildOverlapPanels();
}

SolvaneControl::~SolvaneControl()
{
    stopTimer();
    hideMidSidePanel();
    releaseOverlapPanel();
    ownPanel.readout.removeListener (this);
    ownPanel.removeMouseListener (this);
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

    refreshPanel();

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
        showQuantity (ReadoutQuantity::q);
}

void SolvaneControl::setFrequency (float frequencyHz)
{
    state.frequencyHz = static_cast<int> (frequencyHz);
    setUpperHalf (state.frequencyHz >= BandRoom::shelfFromHz);
    updateBounds();
    refreshPanel();
}

void SolvaneControl::setMidSide (float value, bool notify)
{
    state.midSide = value;

    if (auto* const shared = surroundings.midSidePanel(); shared != nullptr && servedByMidSidePanel())
    {
        shared->setValue (value);

        if (notify && shared->onValue != nullptr)
            shared->onValue (state.band, value);
    }

    refreshPanel();
    repaint();
}

void SolvaneControl::setFlag (bool& flag, bool value)
{
    if (std::exchange (flag, value) == value)
        return;

    refreshPanel();
    repaint();
}

void SolvaneControl::setSolo (bool on)
{
    setFlag (state.solo, on);
}

void SolvaneControl::setBypass (bool on)
{
    setFlag (state.bypassed, on);
}

void SolvaneControl::setMainBypass (bool on)
{
    setFlag (state.mainBypassed, on);
}

void SolvaneControl::setDimmed (bool on)
{
    setFlag (state.dimmed, on);
}

void SolvaneControl::setCtrlHover (bool on)
{
    setFlag (ctrlHover, on);
}

void SolvaneControl::setUpperHalf (bool on)
{
    setFlag (state.upperHalf, on);
}

void SolvaneControl::setHighShelf (bool on)
{
    setFlag (state.highShelf, on);
    updateBounds();
}

//======================================================================================================================
// Place

void SolvaneControl::updateBounds()
{
    const auto room = surroundings.geometry();
    state.depth = depthOfGain (state.gainDb, room.scaleDb);

    if (state.frequencyHz == 0 || state.q <= 0.0f)
        return;

    state.edges = bandEdges (state.frequencyHz, state.q, state.highShelf);
    state.layout = layOutBand (room, { state.frequencyHz, state.gainDb, state.edges });
    setBounds (state.layout.bounds);
    resized();
    repaint();
}

void SolvaneControl::resized()
{
    ownPanel.setBounds (state.layout.panel);
    placeOverlapPanel();
    refreshVisibility();
}

void SolvaneControl::placeOverlapPanel()
{
    const auto wanted = state.layout.overlap;

    if (usedOverlap != wanted || (usedOverlap != OverlapPanel::none && overlapPanel == nullptr))
    {
        releaseOverlapPanel();

        if (auto* const spare = wanted == OverlapPanel::none ? nullptr : surroundings.freeOverlapPanel (wanted))
        {
            usedOverlap = wanted;
            overlapPanel = spare;
            surroundings.setOverlapPanelInUse (wanted, true);
            ownPanel.closeEditor();
            ownPanel.showAtOnce (false);
            spare->setBand (state.band, getTitle(), state.gainDb, baseColour(), state.upperHalf);
            attachPanel (*spare);
        }
    }

    if (overlapPanel != nullptr)
        overlapPanel->setBounds (overlapPanelBounds (usedOverlap, surroundings.geometry(), state.layout.centreRow));
}

void SolvaneControl::releaseOverlapPanel()
{
    if (overlapPanel != nullptr)
    {
        overlapPanel->closeEditor();
        overlapPanel->showAtOnce (false);
        overlapPanel->setOwner (nullptr);
        overlapPanel->readout.removeListener (this);
        overlapPanel->removeMouseListener (this);
        overlapPanel = nullptr;
    }

    if (const auto used = std::exchange (usedOverlap, OverlapPanel::none); used != OverlapPanel::none)
        surroundings.setOverlapPanelInUse (used, false);
}

void SolvaneControl::attachPanel (SolvaneControlPanel& used)
{
    used.setOwner (this);
    used.readout.addListener (this);
    used.addMouseListener (this, true);
    used.setBand (state.band, getTitle(), state.gainDb, colour, state.upperHalf);
    refreshPanel();
}

SolvaneControlPanel& SolvaneControl::panel() noexcept
{
    return overlapPanel != nullptr ? *overlapPanel : ownPanel;
}

//======================================================================================================================
// Looks

juce::Colour SolvaneControl::baseColour() const
{
    return state.usable() ? colour : juce::Colour (Palette::markerFrame);
}

void SolvaneControl::refreshPanel()
{
    auto& used = panel();
    const auto midSideInUse = quantity == ReadoutQuantity::midSide;
    used.showText (BandReadout::textOf (state, quantity), midSideInUse && ! state.solo);
    used.setColour (baseColour());
    used.setSolo (state.solo);
    used.setBypass (state.bypassed);
    used.setHighShelf (state.highShelf);
    used.setShelfEnabled (state.upperHalf);
    used.setEditable (state.usable() && ! state.solo);
    setDescription (BandText::ofFrequency (state.frequencyHz) + ", " + BandText::ofGain (state.gainDb) + ", "
                    + BandText::ofQ (state.q));
}

void SolvaneControl::showQuantity (ReadoutQuantity shownQuantity)
{
    quantity = shownQuantity;
    refreshPanel();
}

bool SolvaneControl::panelWanted() const
{
    return ! state.layout.outOfScale && ! panelHidden && (selected || surroundings.bandsAlwaysShown());
}

void SolvaneControl::refreshVisibility()
{
    fade.setBright (selected || surroundings.bandsAlwaysShown());

    if (overlapPanel != nullptr)
        overlapPanel->showAtOnce (! surroundings.overlayOpen());
    else if (state.layout.outOfScale)
        ownPanel.showAtOnce (false);
    else
        ownPanel.setShown (panelWanted() || ownPanel.isTyping());

    startTicks();
}

void SolvaneControl::hidePanel()
{
    panelHidden = true;
    refreshVisibility();
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
    return hoverQ ? BandTips::qHandles : hoverLine ? BandTips::frequencyLine : BandTips::control;
}

void SolvaneControl::setSelected (bool on)
{
    selected = on;

    if (on)
    {
        panelHidden = false;
        showMidSidePanel();
    }
    else
    {
        hoverNothing();
        hideMidSidePanel();
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

void SolvaneControl::startTicks()
{
    if (! isTimerRunning())
        startTimer (BandFade::tickMs);
}

void SolvaneControl::timerCallback()
{
    const juce::Component::SafePointer<SolvaneControl> alive (this);
    hand.tick();

    if (alive == nullptr)
        return;

    if (fade.tick())
        repaint();

    ownPanel.tick();

    if (fade.settled() && ownPanel.settled() && ! hand.needsTicks())
        stopTimer();
}

//======================================================================================================================
// Mid/side

bool SolvaneControl::servedByMidSidePanel() const
{
    const auto* const shared = surroundings.midSidePanel();
    return shared != nullptr && shared->servedBand() == state.band;
}

void SolvaneControl::showMidSidePanel()
{
    auto* const shared = surroundings.midSidePanel();

    if (shared == nullptr || ! surroundings.stereo() || ! state.usable() || state.layout.outOfScale
        || shared->getParentComponent() == nullptr)
        return;

    const auto& used = panel();

    if (used.getParentComponent() == nullptr)
        return;

    const auto area = shared->getParentComponent()->getLocalArea (used.getParentComponent(), used.getBounds());
    const auto top =
        usedOverlap == OverlapPanel::upper ? area.getY() - MidSideControlPanel::panelHeight : area.getBottom();
    shared->setTopLeftPosition (area.getCentreX() - MidSideControlPanel::panelWidth / 2, top);
    shared->onUse = [target = self] (bool inUse)
    {
        if (target != nullptr)
            target->showQuantity (inUse ? ReadoutQuantity::midSide : ReadoutQuantity::gain);
    };
    shared->onLeft = [target = self]
    {
        if (target != nullptr && ! target->pointerIsHere())
            target->leave();
    };
    shared->showFor (state.band, state.midSide);
}

void SolvaneControl::hideMidSidePanel()
{
    if (servedByMidSidePanel())
        surroundings.midSidePanel()->hideSoon();
}

//======================================================================================================================
// Mouse

bool SolvaneControl::hitTest (int x, int y)
{
    // A band that is out of scale leaves the room between its dots to the others.
    return ! state.layout.outOfScale || hoveredZone (state.layout, { x, y }) == BandZone::dot;
}

int SolvaneControl::rowOf (const juce::MouseEvent& event) const
{
    return getLocalPoint (event.eventComponent, event.position).roundToInt().y + getY();
}

bool SolvaneControl::pointerIsHere() const
{
    const auto* const shared = servedByMidSidePanel() ? surroundings.midSidePanel() : nullptr;
    return isMouseOver (true) || (overlapPanel != nullptr && overlapPanel->isMouseOver (true))
           || (shared != nullptr && shared->isInUse());
}

void SolvaneControl::becomeMeant()
{
    panelHidden = false;

    if (! selected && ! state.layout.outOfScale && onClicked != nullptr)
        onClicked (state.band);
}

void SolvaneControl::leave()
{
    hoverNothing();

    if (! panel().isTyping() && onLeft != nullptr)
        onLeft();
}

void SolvaneControl::mouseEnter (const juce::MouseEvent&)
{
    becomeMeant();
}

void SolvaneControl::mouseMove (const juce::MouseEvent& event)
{
    if (! isOwnEvent (event))
        return;

    const auto zone = hoveredZone (state.layout, event.getPosition());

    if (state.layout.outOfScale)
    {
        updateCursor (zone);
        return setFlag (overDot, zone == BandZone::dot);
    }

    if (! event.mods.isCtrlDown())
        hover (zone);

    if (onMouseMove != nullptr)
        onMouseMove (state.band, event.getPosition() + getPosition());
}

void SolvaneControl::hover (BandZone zone)
{
    updateCursor (zone);
    const auto onEdge = zone == BandZone::topEdge || zone == BandZone::bottomEdge;
    const auto onLine = zone == BandZone::line;

    if (std::exchange (hoverQ, onEdge) != onEdge || std::exchange (hoverLine, onLine) != onLine)
        repaint();

    hoverQ = onEdge;
    hoverLine = onLine;

    showQuantity (quantityOf (zone));
}

ReadoutQuantity SolvaneControl::quantityOf (BandZone zone) const
{
    if (zone == BandZone::line)
        return ReadoutQuantity::frequency;

    // A shelf has a Q, but no edges that would show it: the read-out keeps the gain.
    const auto onEdge = zone == BandZone::topEdge || zone == BandZone::bottomEdge;
    return onEdge && ! state.highShelf ? ReadoutQuantity::q : ReadoutQuantity::gain;
}

void SolvaneControl::hoverNothing()
{
    if (hoverQ || hoverLine || overDot)
        repaint();

    hoverQ = false;
    hoverLine = false;
    overDot = false;
    showQuantity (ReadoutQuantity::gain);
}

void SolvaneControl::updateCursor (BandZone zone)
{
    using Cursor = juce::MouseCursor;
    const auto cursorOf = [&]
    {
        if (zone == BandZone::dot)
            return Cursor::PointingHandCursor;

        if (! state.usable())
            return Cursor::NormalCursor;

        switch (zone)
        {
            case BandZone::line:
                return Cursor::UpDownResizeCursor;
            case BandZone::topEdge:
                return state.highShelf ? Cursor::NormalCursor : Cursor::TopEdgeResizeCursor;
            case BandZone::bottomEdge:
                return state.highShelf ? Cursor::NormalCursor : Cursor::BottomEdgeResizeCursor;
            case BandZone::body:
                return state.solo ? Cursor::NormalCursor : Cursor::DraggingHandCursor;
            case BandZone::dot:
            case BandZone::none:
                break;
        }

        return Cursor::NormalCursor;
    };

    setMouseCursor (cursorOf());
}

void SolvaneControl::mouseExit (const juce::MouseEvent&)
{
    if (! pointerIsHere())
        leave();
}

void SolvaneControl::mouseDown (const juce::MouseEvent& event)
{
    if (! isOwnEvent (event) || state.layout.outOfScale || event.mods.isRightButtonDown()
        || event.mods.isMiddleButtonDown())
        return;

    panel().closeEditor();

    if (onClicked != nullptr)
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
    if (! isOwnEvent (event) || state.layout.outOfScale || ! state.usable() || panel().isTyping())
        return;

    hand.dragTo (rowOf (event));

    if (hand.held() == BandHand::Hold::line)
        showQuantity (ReadoutQuantity::frequency);
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
        onCollapse (-1, false);
        return;
    }

    const auto released = hand.release();

    if (released == BandHand::Hold::body || released == BandHand::Hold::bodyWithCtrl)
    {
        const juce::Component::SafePointer<SolvaneControl> alive (this);
        const auto point = event.getPosition() + getPosition();

        if (state.usable() && ! state.solo)
        {
            if (event.mods.isAltDown())
                hand.resetGain();
            else
                onCtrlClick (state.band, point.x, point.y);
        }

        if (alive == nullptr)
            return;

        hand.endGesture (Kind::gain);
    }

    if (! event.mods.isCtrlDown() && contains (event.getPosition()))
        hover (hoveredZone (state.layout, event.getPosition()));

    repaint();
}

void SolvaneControl::mouseDoubleClick (const juce::MouseEvent& event)
{
    if (! isOwnEvent (event) || state.layout.outOfScale)
        return;

    const auto zone = pressedZone (state.layout, event.getPosition());

    if (event.mods.isShiftDown() && zone == BandZone::body)
    {
        if (onAddBandHere != nullptr)
            onAddBandHere (event.getPosition() + getPosition());

        return;
    }

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
    if (! panel().isTyping() && ! pointerIsHere())
        leave();
}

bool SolvaneControl::keyPressed (const juce::KeyPress& key)
{
    using Action = BandKey::Action;
    const auto wanted = bandKeyOf (key);

    if (wanted.action == Action::none)
        return false;

    becomeMeant();

    switch (wanted.action)
    {
        case Action::toggleSolo:
            panelSoloClicked();
            break;
        case Action::toggleBypass:
            panelBypassClicked();
            break;
        case Action::toggleShelf:
            panelShelfClicked();
            break;
        case Action::remove:
            panelCloseClicked();
            break;
        case Action::leave:
            leave();
            giveAwayKeyboardFocus();
            break;
        case Action::typeGain:
            openTyping (ReadoutQuantity::gain);
            break;
        case Action::typeFrequency:
            openTyping (ReadoutQuantity::frequency);
            break;
        case Action::typeQ:
            openTyping (ReadoutQuantity::q);
            break;
        case Action::gain:
        case Action::frequency:
        case Action::q:
        case Action::midSide:
            stepBy (wanted);
            break;
        case Action::none:
            break;
    }

    return true;
}

void SolvaneControl::stepBy (const BandKey& key)
{
    if (! state.usable())
        return;

    if (key.action == BandKey::Action::frequency)
    {
        hand.setFrequency (BandStep::frequency (state.frequencyHz, key));
        return showQuantity (ReadoutQuantity::frequency);
    }

    if (key.action == BandKey::Action::q)
    {
        hand.setQ (BandStep::q (state.q, key));
        return showQuantity (ReadoutQuantity::q);
    }

    if (key.action == BandKey::Action::midSide)
    {
        showMidSidePanel();

        if (servedByMidSidePanel())
        {
            surroundings.midSidePanel()->setTo (BandStep::midSide (state.midSide, key));
            showQuantity (ReadoutQuantity::midSide);
        }

        return;
    }

    if (! state.solo)
    {
        typeGain (static_cast<double> (BandStep::gain (state.gainDb, key)));
        showQuantity (ReadoutQuantity::gain);
    }
}

//======================================================================================================================
// Typing

void SolvaneControl::openTyping (ReadoutQuantity wanted)
{
    if (! state.usable() || state.solo)
        return;

    showQuantity (wanted);
    panel().openEditor();
}

void SolvaneControl::editorShown (juce::Label*, juce::TextEditor& editor)
{
    constexpr int longestText = 16;
    typedQuantity = quantity == ReadoutQuantity::midSide ? ReadoutQuantity::gain : quantity;
    editor.setJustification (juce::Justification::centred);
    editor.setInputRestrictions (longestText);
    editor.setText (BandReadout::editableTextOf (state, typedQuantity), false);
    editor.selectAll();
    refreshVisibility();
}

void SolvaneControl::labelTextChanged (juce::Label* label)
{
    const auto number = BandText::toNumber (label->getText());
    const auto typed = std::exchange (typedQuantity, ReadoutQuantity::gain);

    if (state.usable() && typed == ReadoutQuantity::q)
        hand.setQ (static_cast<float> (number));
    else if (state.usable() && typed == ReadoutQuantity::frequency)
        hand.setFrequency (static_cast<float> (std::trunc (number)));
    else if (state.usable() && ! state.solo)
        typeGain (number);

    refreshPanel();
}

void SolvaneControl::typeGain (double number)
{
    const auto limits = surroundings.gainLimits();
    const auto typed = typedGain (number, limits);

    // While the scale is on its way a depth would mean another gain by the time it arrives.
    if (typed.widensScale || surroundings.scaleAnimating())
        surroundings.setTypedGain (typed.gainDb);

    if (typed.widensScale)
        onCollapse (-1, false);

    hand.setGain (depthOfGain (typed.gainDb, limits.scaleDb));
}

void SolvaneControl::editorHidden (juce::Label*, juce::TextEditor&)
{
    // What was typed arrives after this; then the band is left, or the keyboard comes back to it.
    juce::MessageManager::callAsync (
        [target = self]
        {
            if (target == nullptr || target->panel().isTyping())
                return;

            if (target->isShowing() && juce::Component::getCurrentlyFocusedComponent() == nullptr)
                target->grabKeyboardFocus();

            if (! target->hasKeyboardFocus (true) && ! target->pointerIsHere())
                target->leave();

            target->refreshVisibility();
        });
}

//======================================================================================================================
// Buttons

void SolvaneControl::panelSoloClicked()
{
    if (state.usable())
        onSolo (state.band, ! state.solo);
}

void SolvaneControl::panelBypassClicked()
{
    if (! state.mainBypassed && ! state.dimmed && ! state.solo)
        onBypass (state.band, ! state.bypassed);
}

void SolvaneControl::panelShelfClicked()
{
    if (state.upperHalf && state.usable())
        onHighShelf (state.band, ! state.highShelf);
}

void SolvaneControl::panelCloseClicked()
{
    if (state.usable())
        onClose (state.band);
}

//======================================================================================================================
// Parameters

void SolvaneControl::parameterChanged (const juce::String& parameterId, float value)
{
    const auto found = std::find (listenedIds.begin(), listenedIds.end(), parameterId);

    if (found == listenedIds.end() || ! surroundings.isActive (state.band))
        return;

    const auto index = static_cast<std::size_t> (found - listenedIds.begin());

    if (hand.isWritingHere())
        return take (listenedKinds[index], value);

    changedValues[index].store (value, std::memory_order_relaxed);

    if (changedKinds.fetch_or (1u << index, std::memory_order_release) == 0)
        juce::MessageManager::callAsync (
            [target = self]
            {
                if (target != nullptr)
                    target->serveChanges();
            });
}

void SolvaneControl::serveChanges()
{
    const auto kinds = changedKinds.exchange (0, std::memory_order_acquire);

    for (std::size_t index = 0; index < listenedKinds.size(); ++index)
        if ((kinds & (1u << index)) != 0)
            take (listenedKinds[index], changedValues[index].load (std::memory_order_relaxed));
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
