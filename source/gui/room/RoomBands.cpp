#include "gui/room/RoomBands.h"

#include "gui/band/FrequencyDrag.h"
#include "gui/room/BandColours.h"
#include "gui/room/BandViews.h"
#include "gui/room/ControlOnRow.h"
#include "gui/room/RoomGeometryOf.h"

#include <algorithm>

/** A control with its subscriptions. */
class RoomBands::Hung
{
public:
    Hung (juce::AudioProcessorValueTreeState& treeToUse, int band, IBandSurroundings& surroundings)
        : control (band, bandColours()[static_cast<std::size_t> (band)], surroundings), tree (treeToUse)
    {
        for (const auto kind : SolvaneControl::listenedKinds)
            tree.addParameterListener (ParameterIds::ofBand (band, kind), &control);
    }

    ~Hung()
    {
        for (const auto kind : SolvaneControl::listenedKinds)
            tree.removeParameterListener (ParameterIds::ofBand (control.bandIndex(), kind), &control);
    }

    Hung (const Hung&) = delete;
    Hung& operator= (const Hung&) = delete;

    SolvaneControl control;

private:
    juce::AudioProcessorValueTreeState& tree;
};

RoomBands::RoomBands (VelmoraAudioProcessor& processorToUse, juce::Component& roomToUse)
    : processor (processorToUse),
      model (processorToUse.model),
      state (processorToUse.model.interfaceState),
      room (roomToUse),
      surroundings (processorToUse.model, [this] { return roomGeometryOf (model); })
{
}

RoomBands::~RoomBands()
{
    // One after the other: a control that goes may still ask about those that are left.
    while (! hung.empty())
    {
        const auto last = std::move (hung.back());
        hung.pop_back();
    }
}

//======================================================================================================================
SolvaneControl* RoomBands::find (int band) const noexcept
{
    for (const auto& item : hung)
        if (item->control.bandIndex() == band)
            return &item->control;

    return nullptr;
}

std::vector<int> RoomBands::stackingOrder() const
{
    std::vector<int> order;

    for (const auto& item : hung)
        order.push_back (item->control.bandIndex());

    return order;
}

bool RoomBands::isTyping() const
{
    return std::ranges::any_of (hung, [] (const auto& item) { return item->control.panel().isTyping(); });
}

void RoomBands::matchParameters()
{
    for (int band = 0; band < bandCount; ++band)
    {
        const auto wanted = BandViews::isInUse (model, band);
        const auto there = find (band) != nullptr;

        if (there && ! wanted)
            remove (band);

        if (! there && wanted)
        {
            hung.push_back (std::make_unique<Hung> (processor.getAPVTS(), band, surroundings));
            bind (hung.back()->control);
            room.addAndMakeVisible (hung.back()->control);
            stackIsStale = true;
        }

        if (wanted)
            readParameters (band);
    }

    updateSilence();
    sort();
}

void RoomBands::readParameters (int band)
{
    auto* control = find (band);

    if (control == nullptr)
        return;

    const auto value = [&] (Kind kind) { return model.getBandValue (band, kind); };
    control->setFrequency (value (Kind::frequency));
    control->setHighShelf (value (Kind::highShelf) != 0.0f);
    control->setQ (value (Kind::q));
    control->setGain (value (Kind::gain));
    control->setMidSide (value (Kind::midSide));
    control->setSolo (value (Kind::solo) != 0.0f);
    control->setBypass (value (Kind::bypass) != 0.0f);
    control->updateBounds();
}

void RoomBands::remove (int band)
{
    const auto found =
        std::ranges::find_if (hung, [band] (const auto& item) { return item->control.bandIndex() == band; });

    if (found == hung.end())
        return;

    if (focused == band)
        focused = -1;

    if (broughtForward == band)
        broughtForward = -1;

    const auto going = std::move (*found);
    hung.erase (found);
    room.removeChildComponent (&going->control);
}

void RoomBands::masterLimitsChanged()
{
    for (const auto& item : hung)
        item->control.setQ (model.getBandValue (item->control.bandIndex(), Kind::q));
}

void RoomBands::hideLowerPanel (bool hidden)
{
    for (const auto& item : hung)
        if (item->control.usedOverlapPanel() == OverlapPanel::lower)
            item->control.setPanelHidden (hidden);
}

void RoomBands::layOut()
{
    for (const auto& item : hung)
        item->control.updateBounds();
}

void RoomBands::updateSilence()
{
    const auto anySolo = std::ranges::any_of (
        hung, [this] (const auto& item) { return model.getBandValue (item->control.bandIndex(), Kind::solo) != 0.0f; });

    for (const auto& item : hung)
    {
        const auto solo = model.getBandValue (item->control.bandIndex(), Kind::solo) != 0.0f;
        item->control.setSolo (solo);
        item->control.setDimmed (anySolo && ! solo);
        item->control.setMainBypass (model.bypassParameterOn());
    }
}

void RoomBands::sort()
{
    if (heldGains > 0 || broughtForward >= 0)
        return;

    const auto before = stackingOrder();
    std::ranges::stable_sort (hung,
                              [] (const auto& a, const auto& b)
                              { return a->control.bandState().depth > b->control.bandState().depth; });

    if (std::exchange (stackIsStale, false) || before != stackingOrder())
        for (const auto& item : hung)
            item->control.toFront (false);

    updateFocusOrder();

    if (onSorted)
        onSorted();
}

/** The tabulator walks from low to high. */
void RoomBands::updateFocusOrder()
{
    auto place = 1;

    for (const auto band : BandViews::byFrequency (model))
        if (auto* control = find (band))
            control->setExplicitFocusOrder (place++);
}

bool RoomBands::takeKeyboard (bool highest)
{
    const auto order = BandViews::byFrequency (model);
    auto* const first = order.empty() ? nullptr : find (highest ? order.back() : order.front());

    if (first != nullptr)
        first->grabKeyboardFocus();

    return first != nullptr;
}

//======================================================================================================================
void RoomBands::focus (int band)
{
    focused = band;

    for (const auto& item : hung)
    {
        auto& control = item->control;
        control.setCtrlHover (false);

        if (control.isSelected() != (control.bandIndex() == band))
            control.setSelected (control.bandIndex() == band);
    }

    if (onMeant)
        onMeant();

    if (onWallsChanged)
        onWallsChanged();
}

void RoomBands::collapse()
{
    focused = -1;
    broughtForward = -1;

    for (const auto& item : hung)
        item->control.collapse();

    if (onWallsChanged)
        onWallsChanged();
}

void RoomBands::mouseLeft()
{
    if (std::exchange (skipLeaveOnce, false))
        return;

    const auto wasForward = broughtForward >= 0;
    collapse();

    if (wasForward)
        sort();
}

//======================================================================================================================
void RoomBands::write (int band, Kind kind, float value)
{
    model.setParameterValue (ParameterIds::ofBand (band, kind), value);
}

void RoomBands::bind (SolvaneControl& control)
{
    control.onGain = [this] (int band, float depth) { takeGain (band, depth); };
    control.onQ = [this] (int band, float normalisedQ)
    {
        state.bandChangedByUser = true;
        model.setBandValueFromControl (band, std::clamp (normalisedQ, 0.0f, 1.0f), static_cast<int> (Kind::q));
    };
    control.onFrequency = [this] (int band, float position, bool isRow) { takeFrequency (band, position, isRow); };
    control.onGestureBegin = [this] (int band, Kind kind) { gesture (band, kind, true); };
    control.onGestureEnd = [this] (int band, Kind kind) { gesture (band, kind, false); };
    control.onClicked = [this] (int band) { focus (band); };
    control.onLeft = [this] { mouseLeft(); };
    control.onMouseMove = [this] (int band, juce::Point<int> point) { mouseMoved (band, point); };
    control.onCtrlClick = [this] (int band, int x, int y)
    {
        if (juce::ModifierKeys::getCurrentModifiers().isCtrlDown())
            if (const auto behind = bandBehind (band, { x, y }))
            {
                bringForward (*behind, { x, y });
                focus (*behind);
            }
    };
    control.onSolo = [this] (int band, bool on) { write (band, Kind::solo, on ? 1.0f : 0.0f); };
    control.onBypass = [this] (int band, bool on) { write (band, Kind::bypass, on ? 1.0f : 0.0f); };
    control.onHighShelf = [this] (int band, bool on) { write (band, Kind::highShelf, on ? 1.0f : 0.0f); };
    control.onClose = [this] (int band) { onClose (band); };
    control.onCollapse = [this] (int, bool) { onScaleWanted(); };
    control.onAddBandHere = [this] (juce::Point<int> point) { onAddBandAtRow (point.y); };
}

void RoomBands::takeGain (int band, float depth)
{
    constexpr int plainGain = 9;
    state.bandChangedByUser = true;

    if (const auto typed = std::exchange (state.typedGainDb, 0.0f); typed != 0.0f)
        model.setBandValueFromControl (band, typed, plainGain);
    else
        model.setBandValueFromControl (band, depth, static_cast<int> (Kind::gain));

    model.storedBandGains[static_cast<std::size_t> (band)] = model.getBandValue (band, Kind::gain);
}

OverlapLimits RoomBands::limitsFor (const SolvaneControl& control) const
{
    return { .upperTakenByAnother = state.upperPanelInUse && control.usedOverlapPanel() != OverlapPanel::upper,
             .lowerTakenByAnother = state.lowerPanelInUse && control.usedOverlapPanel() != OverlapPanel::lower };
}

void RoomBands::takeFrequency (int band, float position, bool isRow)
{
    auto* control = find (band);

    if (control == nullptr)
        return;

    const auto limits = limitsFor (*control);
    const auto frequency = isRow ? frequencyUnderHand (roomGeometryOf (model),
                                                       static_cast<float> (control->bandState().frequencyHz),
                                                       position,
                                                       control->bandState().gainDb,
                                                       limits)
                                 : allowedFrequency (position, limits);

    if (! frequency)
        return;

    write (band, Kind::frequency, *frequency);

    // At once, not by the message that the parameter sends: the next step of a drag starts from here.
    control->setFrequency (model.getBandValue (band, Kind::frequency));
}

void RoomBands::frequencyChanged (int band)
{
    auto* control = find (band);

    if (control == nullptr)
        return;

    const auto frequency = model.getBandValue (band, Kind::frequency);

    if (limitsFor (*control).allow (frequency))
        control->setFrequency (frequency);

    updateFocusOrder();
}

void RoomBands::gesture (int band, Kind kind, bool begins)
{
    auto* parameter = processor.getAPVTS().getParameter (ParameterIds::ofBand (band, kind));

    if (parameter == nullptr)
        return;

    if (begins)
        parameter->beginChangeGesture();
    else
        parameter->endChangeGesture();

    if (kind != Kind::gain)
        return;

    heldGains += begins ? 1 : -1;
    sort();
}

//======================================================================================================================
std::optional<int> RoomBands::bandBehind (int band, juce::Point<int> point) const
{
    std::vector<ControlOutline> outlines;

    for (const auto& item : hung)
    {
        const auto& layout = item->control.bandState().layout;
        outlines.push_back ({ .band = item->control.bandIndex(),
                              .lineRow = static_cast<float> (layout.lineRow()),
                              .collapsed = layout.outOfScale,
                              .left = static_cast<float> (layout.bounds.getX()),
                              .right = static_cast<float> (layout.bounds.getRight()) });
    }

    return findControlOnRow (outlines, band, static_cast<float> (point.x), static_cast<float> (point.y));
}

void RoomBands::markBehind (int band)
{
    for (const auto& item : hung)
        item->control.setCtrlHover (item->control.bandIndex() == band);
}

void RoomBands::mouseMoved (int band, juce::Point<int> point)
{
    constexpr int margin = 20;

    if (auto* control = find (band); control != nullptr && keepClear)
        control->setPanelHidden (keepClear().expanded (margin).contains (point));

    // The band that was brought forward stays in front until the mouse leaves it.
    if (band == broughtForward)
        return;

    if (! juce::ModifierKeys::getCurrentModifiers().isCtrlDown())
        return markBehind (-1);

    const auto behind = bandBehind (band, point);
    markBehind (behind.value_or (-1));

    if (behind)
        bringForward (*behind, point);
}

void RoomBands::bringForward (int band, juce::Point<int> point)
{
    auto* control = find (band);

    // Elsewhere the mouse would not come to it, and so would never leave it.
    if (control == nullptr || ! control->getBounds().contains (point))
        return;

    broughtForward = band;
    skipLeaveOnce = true;
    stackIsStale = true;
    control->toFront (false);

    if (onSorted)
        onSorted();
}
