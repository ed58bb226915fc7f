#include "gui/room/Solvane.h"

#include "gui/look/Fonts.h"
#include "gui/look/Palette.h"
#include "gui/look/Tips.h"
#include "gui/room/AutomaticScale.h"
#include "gui/room/BandColours.h"
#include "gui/room/BandParameters.h"
#include "gui/room/BandViews.h"
#include "gui/room/NewBand.h"
#include "gui/room/RoomBackground.h"
#include "gui/room/RoomGeometryOf.h"
#include "gui/room/RoomPainter.h"

using Kind = Settings::Parameter;

namespace
{
constexpr auto doubleClickHint = "Double click to add an EQ band";

constexpr std::array watchedKinds { Kind::frequency, Kind::gain,   Kind::q,        Kind::solo,
                                    Kind::bypass,    Kind::active, Kind::highShelf };

/** All watched kinds band by band, then what concerns every band: the mode first, then the main bypass. */
juce::StringArray watchedParameters()
{
    juce::StringArray ids;

    for (int band = 0; band < bandCount; ++band)
        for (const auto kind : watchedKinds)
            ids.add (ParameterIds::ofBand (band, kind));

    ids.add (ParameterIds::mode);
    ids.add (ParameterIds::bypass);
    return ids;
}

float primaryDisplayScale()
{
    const auto* display = juce::Desktop::getInstance().getDisplays().getPrimaryDisplay();
    return display != nullptr ? static_cast<float> (display->scale) : 1.0f;
}

void initialiseLabel (juce::Label& label, Palette::Argb colour, const juce::Font& font)
{
    label.setJustificationType (juce::Justification::centred);
    label.setColour (juce::Label::textColourId, juce::Colour (colour));
    label.setFont (font);
    label.setBorderSize ({});
    label.setInterceptsMouseClicks (false, false);
}
} // namespace

Solvane::Solvane (VelmoraAudioProcessor& processorToUse)
    : processor (processorToUse),
      model (processorToUse.model),
      state (processorToUse.model.interfaceState),
      addBandMarker (processorToUse.model),
      bands (processorToUse, *this),
      targetRefresh (processorToUse),
      parameterWatch (processorToUse.getAPVTS(), watchedParameters(), [this] (int index) { parameterChanged (index); }),
      worker (
          processorToUse,
          targetPictures,
          responsePictures,
          [this] (RoomWorker::Change change) { wallsChanged (change); },
          [this] { parameterWatch.serve(); })
{
    setTitle ("Room");
    setTooltip (Tips::text (Tips::room));
    setOpaque (true);
    setFocusContainerType (FocusContainerType::keyboardFocusContainer);

    // Otherwise a click in the empty room would give the keyboard to the lowest band, and nobody would see that.
    setWantsKeyboardFocus (true);

    constexpr float hintHeight = 14.0f;
    constexpr float scaleHeight = 10.0f;
    initialiseLabel (hintLabel, Palette::hintLabel, Fonts::regular (hintHeight));
    initialiseLabel (scaleLabel, Palette::secondaryLabel, Fonts::regular (scaleHeight));
    hintLabel.setComponentID ("hintLabel");
    // In the smallest window the floor's strip is narrower than the number.
    scaleLabel.setMinimumHorizontalScale (0.5f);
    scaleLabel.setBorderSize ({ 0, 1, 0, 1 });
    scaleLabel.setComponentID ("scaleLabel");
    scaleSelector.setComponentID ("scaleSelector");
    scaleSelector.setTooltip (Tips::text (Tips::scale));
    addBandMarker.setComponentID ("addBandMarker");
    hintLabel.setText (doubleClickHint, juce::dontSendNotification);
    scaleSelector.onScale = [this] (float scaleDb) { setScale (scaleDb); };
    scaleSelector.onHover = [this] (bool over) { bands.hideLowerPanel (over); };

    addAndMakeVisible (hintLabel);
    addAndMakeVisible (scaleLabel);
    addChildComponent (addBandMarker);
    addAndMakeVisible (scaleSelector);

    bindBands();
    transportPlayed = model.transport.isPlaying();

    // It may have been stopped when the last window went.
    if (transportPlayed)
        processor.liveAnalysis().spectrum().frozen = false;

    subscriptions = { model.channels.add (
                          [this]
                          {
                              stateSet = true;
                              triggerAsyncUpdate();
                          },
                          Channels::stateInformationSet),
                      model.channels.add (
                          [this]
                          {
                              // The window makes the panels at its own next turn, which may come after this one.
                              turnsUntilPanels = 2;
                              triggerAsyncUpdate();
                          },
                          Channels::createOverlapControls),
                      model.channels.add ([this] { followTransport(); }, Channels::transportPlaying) };

    rebuildControls();
    showScale();
    worker.start();
}

Solvane::~Solvane()
{
    worker.stop();

    for (const auto token : subscriptions)
        model.channels.remove (token);

    cancelPendingUpdate();
    giveAwayKeyboardFocus();
}

/** Audio thread, once a block: a stopped transport keeps the spectrum as it is. Real-time safe. */
void Solvane::followTransport()
{
    const auto playing = model.transport.isPlaying();

    if (transportPlayed.exchange (playing, std::memory_order_relaxed) == playing)
        return;

    processor.liveAnalysis().spectrum().frozen = ! playing;
    transportChanged = true;
}

void Solvane::serveTransport()
{
    if (transportChanged.exchange (false))
        processor.liveAnalysis().spectrum().clear();
}

void Solvane::bindBands()
{
    bands.onScaleWanted = [this] { setScale (-1.0f); };
    bands.onClose = [this] (int band) { deleteBand (band, false); };
    bands.onAddBandAtRow = [this] (int row)
    { addBandByHand (NewBand::frequencyOfClick (roomGeometryOf (model), row)); };
    bands.onMeant = [this]
    {
        stopHover();
        closeMenu();
    };
    bands.onWallsChanged = [this] { repaintWalls(); };
    bands.onSorted = [this] { scaleSelector.toFront (false); };
    bands.keepClear = [this] { return scaleSelector.getBounds(); };
}

//======================================================================================================================
int Solvane::addBand (float frequencyHz, int band, bool fromState)
{
    if (! fromState)
    {
        const OverlapLimits limits { .upperTakenByAnother = state.upperPanelInUse,
                                     .lowerTakenByAnother = state.lowerPanelInUse };
        band = BandViews::firstFree (model).value_or (-1);

        if (! isOnScreen() || ! limits.allow (frequencyHz) || band < 0)
            return -1;

        BandParameters::hang (model, band, frequencyHz);
    }

    bands.matchParameters();
    bands.focus (band);
    updateHint();
    repaint();
    return band;
}

int Solvane::addBandByHand (float frequencyHz)
{
    const auto band = addBand (frequencyHz, -1, false);

    // By the frequency of the hand, which the parameter rounds.
    if (band >= 0 && NewBand::beginsAsShelf (frequencyHz))
        model.setParameterValue (ParameterIds::ofBand (band, Kind::highShelf), 1.0f);

    return band;
}

void Solvane::deleteBand (int band, bool keepParameters)
{
    bands.remove (band);

    if (! keepParameters)
        BandParameters::reset (model, band);

    bands.updateSilence();
    bands.sort();
    updateHint();
    repaint();
}

void Solvane::deleteAllBands()
{
    for (int band = 0; band < bandCount; ++band)
        deleteBand (band, false);
}

void Solvane::rebuildControls()
{
    bands.matchParameters();
    updateHint();
    repaint();
}

void Solvane::collapseControls()
{
    bands.collapse();
}

void Solvane::updateHint()
{
    hintLabel.setVisible (bands.isEmpty());
}

void Solvane::layOutControls()
{
    bands.layOut();
}

//======================================================================================================================
void Solvane::setScale (float scaleDb)
{
    const auto byHand = scaleDb > 0.0f;
    const auto chosen = byHand ? scaleDb : BandViews::neededScale (model);
    model.targetScaleDb = chosen;
    state.scaleAnimating = true;
    showScale();

    if (byHand && onBandsOutOfScale && BandViews::anyBeyond (model, chosen))
        onBandsOutOfScale();
}

void Solvane::showScale()
{
    const auto scaleDb = model.targetScaleDb.load();
    scaleSelector.setScale (scaleDb);
    scaleLabel.setText ("-" + juce::String (static_cast<int> (scaleDb)) + "dB", juce::dontSendNotification);
}

void Solvane::resetForStateChange()
{
    rebuildControls();
    bands.layOut();
    collapseControls();
    showScale();
    rebuildTarget();
    repaint();
}

void Solvane::rebuildTarget()
{
    targetRefresh.rebuild();
    worker.restart();
}

void Solvane::forgetMeasurement()
{
    targetRefresh.startAnew();
    worker.restart();
}

void Solvane::setMouseEnabled (bool enabled)
{
    setInterceptsMouseClicks (enabled, enabled);
}

//======================================================================================================================
void Solvane::wallsChanged (RoomWorker::Change change)
{
    if (change.walls)
        wallsDrawn = true;

    if (change.layout)
        scaleMoved = true;

    triggerAsyncUpdate();
}

void Solvane::handleAsyncUpdate()
{
    if (stateSet.exchange (false))
        resetForStateChange();

    if (turnsUntilPanels > 0)
    {
        if (--turnsUntilPanels > 0)
            triggerAsyncUpdate();
        else
            bands.layOut();
    }

    if (scaleMoved.exchange (false))
    {
        bands.layOut();
        repaint();
    }

    if (wallsDrawn.exchange (false))
        repaintWalls();
}

void Solvane::repaintWalls()
{
    constexpr auto wallWidth = static_cast<int> (RoomGeometry::depth);
    repaint (getLocalBounds().withWidth (wallWidth));
    repaint (getLocalBounds().withLeft (getWidth() - wallWidth));
}

void Solvane::parameterChanged (int index)
{
    const auto kinds = static_cast<int> (watchedKinds.size());

    if (index < bandCount * kinds)
        bandParameterChanged (index / kinds, watchedKinds[static_cast<std::size_t> (index % kinds)]);
    else if (index == bandCount * kinds)
        bands.masterLimitsChanged();
    else
        bands.updateSilence();

    repaintWalls();
}

void Solvane::bandParameterChanged (int band, Kind kind)
{
    switch (kind)
    {
        case Kind::active:
            return rebuildControls();
        case Kind::frequency:
            return bands.frequencyChanged (band);
        case Kind::solo:
            return bands.updateSilence();
        case Kind::gain:
            gainChanged (band);
            return bands.sort();
        case Kind::q:
        case Kind::bypass:
        case Kind::highShelf:
        case Kind::midSide:
            break;
    }
}

void Solvane::gainChanged (int band)
{
    if (BandViews::isInUse (model, band) && ! processor.sessionState().isRestoring()
        && AutomaticScale::isOutgrown (model.displayScaleDb, model.getBandValue (band, Kind::gain)))
        setScale (-1.0f);
}

//======================================================================================================================
void Solvane::resized()
{
    const auto width = getWidth();
    const auto height = getHeight();
    state.roomWidth = width;
    state.roomHeight = height;

    constexpr int hintWidth = 170;
    constexpr int hintHeight = 50;
    constexpr int scaleLabelHeight = 15;
    constexpr int selectorHeight = 25;
    const auto stripWidth = width / 30;
    const auto labelTop = height - static_cast<int> (RoomGeometry::depth) - scaleLabelHeight;
    hintLabel.setBounds (width / 2 - hintWidth / 2, height / 2 - hintHeight / 2, hintWidth, hintHeight);
    scaleLabel.setBounds (width / 2 - stripWidth / 2, labelTop, stripWidth, scaleLabelHeight);
    scaleSelector.setRestingBounds (
        { width / 2 - stripWidth, height - selectorHeight, 2 * stripWidth, selectorHeight });
    addBandMarker.setBounds (getLocalBounds());
    bands.layOut();

    const auto displayScale = primaryDisplayScale();
    targetRefresh.rebuild();
    targetPictures.resize (static_cast<int> (RoomGeometry::depth), height, displayScale);
    responsePictures.resize (static_cast<int> (RoomGeometry::depth), height, displayScale);
    background = RoomBackground::draw (roomGeometryOf (model), displayScale);
    worker.restart();
}

void Solvane::paint (juce::Graphics& graphics)
{
    graphics.fillAll (juce::Colours::black);
    graphics.drawImage (background, getLocalBounds().toFloat());

    const auto room = roomGeometryOf (model);
    RoomPainter::drawGrid (graphics, room);
    responsePictures.paint (graphics, getLocalBounds());
    targetPictures.paint (graphics, getLocalBounds());

    const auto master = model.filterMode() == FilterMode::master;
    const auto views = BandViews::read (model);

    for (const auto& view : views)
        RoomPainter::drawMarker (graphics, room, view, master);

    for (const auto& view : views)
        if (view.band == bands.focusBand())
            RoomPainter::drawFocus (graphics, room, view, master);
}

//======================================================================================================================
juce::Colour Solvane::colourOfNextBand() const
{
    return bandColours()[static_cast<std::size_t> (BandViews::firstFree (model).value_or (0))];
}

void Solvane::mouseMove (const juce::MouseEvent& event)
{
    if (scaleSelector.getBounds().contains (event.getPosition()))
        return;

    const auto frequency = NewBand::frequencyOfClick (roomGeometryOf (model), event.y);
    const auto colour = colourOfNextBand();
    addBandMarker.show (frequency, colour);

    if (onHover)
        onHover (frequency, true, colour);
}

void Solvane::stopHover()
{
    addBandMarker.setVisible (false);

    if (onHover)
        onHover (0.0f, false, colourOfNextBand());
}

void Solvane::mouseExit (const juce::MouseEvent&)
{
    stopHover();
}

void Solvane::mouseEnter (const juce::MouseEvent& event)
{
    if (state.analysisOpen || state.analysisSliding)
        return;

    if (state.bandsPanelOpen)
        closeMenu();
    else if (! scaleSelector.getBounds().contains (event.getPosition()) && ! bands.isTyping())
        collapseControls();
}

void Solvane::closeMenu()
{
    if (state.bandsPanelOpen && onCloseMenu)
        onCloseMenu();
}

bool Solvane::keyPressed (const juce::KeyPress& key)
{
    const auto backwards = key.getModifiers().isShiftDown();
    return key.isKeyCode (juce::KeyPress::tabKey) && hasKeyboardFocus (false) && bands.takeKeyboard (backwards);
}

void Solvane::mouseDoubleClick (const juce::MouseEvent& event)
{
    state.mousePosition = event.getPosition();
    addBandByHand (NewBand::frequencyOfClick (roomGeometryOf (model), event.y));
}

std::unique_ptr<juce::AccessibilityHandler> Solvane::createAccessibilityHandler()
{
    return std::make_unique<juce::AccessibilityHandler> (*this, juce::AccessibilityRole::group);
}
