#include "gui/editor/PluginEditor.h"

#include "gui/analysis/AnalysisWindow.h"
#include "gui/editor/PresetMenu.h"
#include "gui/editor/RoomPlaces.h"
#include "gui/help/HelpWindow.h"
#include "gui/look/LookAndFeelFactory.h"
#include "gui/look/Palette.h"

#include <cmath>

namespace
{
constexpr float unscaledPercent = 100.0f;
constexpr int gapBelowPanel = 6;

/** What lay over the room when the last window went is closed. Before anything of the new one is made. */
PluginModel& openedAnew (PluginModel& model)
{
    auto& state = model.interfaceState;
    state.closingEditor = false;
    state.settingsOpen = false;
    state.helpOpen = false;
    state.bandsPanelOpen = false;
    state.analysisOpen = false;
    state.analysisSliding = false;
    model.editorClosed = false;
    return model;
}

void drawVertically (juce::Graphics& g, juce::Rectangle<int> area, Palette::Argb top, Palette::Argb bottom)
{
    g.setGradientFill (juce::ColourGradient::vertical (juce::Colour (top),
                                                       static_cast<float> (area.getY()),
                                                       juce::Colour (bottom),
                                                       static_cast<float> (area.getBottom())));
    g.fillRect (area);
}
} // namespace

VelmoraAudioProcessorEditor::VelmoraAudioProcessorEditor (VelmoraAudioProcessor& owner, const WebHosts& hosts)
    : AudioProcessorEditor (owner),
      audioProcessor (owner),
      model (openedAnew (owner.model)),
      lookAndFeel (lookAndFeelOf (owner.model)),
      mainWindow (owner),
      overlays (mainWindow, topRow, model.interfaceState, clock),
      menuCommands (owner, mainWindow.room(), overlays),
      dropDowns (*this, mainWindow),
      unasked (model, overlays, dropDowns),
      analysisSlide (*this, mainWindow, model.interfaceState, clock),
      bandPanels (*this, owner),
      announcements (model, mainWindow, topRow, hosts, [this] { helpWindow->refresh(); })
{
    setTitle ("SOLVANE");
    setLookAndFeel (&lookAndFeel);
    addAndMakeVisible (mainWindow);
    mainWindow.room().onBandsOutOfScale = [this] { unasked.noteBandsOutOfScale(); };
    overlays.onSettingsClosed = [this] { applyToolTipSetting(); };
    bindMenu();
    helpWindow = &RoomPlaces::fill (mainWindow, owner, hosts, *this, *this);

    topRow.addTo (*this);

    for (auto* button : topRow.all())
    {
        button->addListener (this);
        button->addMouseListener (this, false);
    }

    announcements.addTo (*this, *this);
    presetLabels.addTo (*this, *this);
    headerLabel.setInterceptsMouseClicks (false, false);
    addAndMakeVisible (headerLabel);
    mainWindow.room().addMouseListener (this, false);

    subscribe();
    showPresetLabels();
    topRow.showComparison (audioProcessor.sessionState().comparisonASelected());
    topRow.showGainScaleInUse (model.gainScalePercent() != unscaledPercent);
    topRow.showOutput (outputState());
    applyToolTipSetting();

    const auto size = EditorLayout::openingSize (model.windowWidth, model.windowHeight, model.minimised());
    setResizable (true, true);
    setResizeLimits (EditorLayout::minWidth, EditorLayout::minHeight, EditorLayout::maxWidth, EditorLayout::maxHeight);
    setSize (size.getWidth(), size.getHeight());
    setVisible (true);
    compositor.emplace (*this);
    clock.forceRepaint();
    model.setCreateOverlapControls (true, true);
    startTimer (EditorClock::intervalMs);
}

VelmoraAudioProcessorEditor::~VelmoraAudioProcessorEditor()
{
    letGoOfThePointer();

    // Whatever is still posted finds nobody from here on.
    masterReference.clear();
    notifications.clear();
    presetSubscription.reset();
    gainScaleSubscription.reset();
    model.interfaceState.closingEditor = true;
    stopTimer();
    compositor.reset();
    mainWindow.room().onBandsOutOfScale = nullptr;
    mainWindow.room().onCloseMenu = nullptr;
    mainWindow.burgerMenu().onCommand = nullptr;
    overlays.onSettingsClosed = nullptr;
    toolTips.reset();
    setLookAndFeel (nullptr);
    model.editorClosed = true;
}

void VelmoraAudioProcessorEditor::letGoOfThePointer()
{
    // A button that is held while the window goes is let go where nobody hears it. The framework would take it for held
    // on, and pass over the first press in the next window.
    const auto pointer = juce::Desktop::getInstance().getMainMouseSource();
    const auto* held = pointer.isDragging() ? pointer.getComponentUnderMouse() : nullptr;

    if (held != nullptr && (held == this || isParentOf (held)))
        juce::ModifierKeys::currentModifiers = juce::ModifierKeys::currentModifiers.withoutMouseButtons();
}

void VelmoraAudioProcessorEditor::bindMenu()
{
    mainWindow.burgerMenu().onCommand = [this] (Settings::BurgerMenuCallback command, int number)
    { menuCommands.run (command, number); };
    mainWindow.room().onCloseMenu = [this] { menuCommands.run (Settings::BurgerMenuCallback::closeMenu, 0); };
}

//======================================================================================================================
void VelmoraAudioProcessorEditor::subscribe()
{
    afterwards (Channels::createOverlapControls, &VelmoraAudioProcessorEditor::makeBandPanels);
    afterwards (Channels::mainBypass, &VelmoraAudioProcessorEditor::followMainBypass);
    afterwards (Channels::canUseMasterMode, &VelmoraAudioProcessorEditor::followMasterLimits);
    afterwards (Channels::smartBandsReady, &VelmoraAudioProcessorEditor::offerSmartBands);
    afterwards (Channels::stateInformationSet, &VelmoraAudioProcessorEditor::followSession);
    afterwards (Channels::minimised, &VelmoraAudioProcessorEditor::followMinimised);
    afterwards (Channels::showHeatmap, &VelmoraAudioProcessorEditor::followHeatMap);
    presetSubscription.emplace (audioProcessor.getAPVTS(), ParameterIds::currentPreset, *this);
    gainScaleSubscription.emplace (audioProcessor.getAPVTS(), ParameterIds::gainScale, *this);
}

/** Subscribes to a channel, whoever fires it, with a reaction on the message thread. */
void VelmoraAudioProcessorEditor::afterwards (const char* channel, void (VelmoraAudioProcessorEditor::*reaction)())
{
    const juce::WeakReference<VelmoraAudioProcessorEditor> weak (this);
    notifications.push_back (std::make_unique<NotificationSubscription> (model.channels,
                                                                         channel,
                                                                         [weak, reaction]
                                                                         {
                                                                             juce::MessageManager::callAsync (
                                                                                 [weak, reaction]
                                                                                 {
                                                                                     if (auto* editor = weak.get())
                                                                                         (editor->*reaction)();
                                                                                 });
                                                                         }));
}

void VelmoraAudioProcessorEditor::parameterChanged (const juce::String& parameterId, float newValue)
{
    const auto restoring = audioProcessor.sessionState().isRestoring();
    juce::MessageManager::callAsync (
        [weak = juce::WeakReference<VelmoraAudioProcessorEditor> (this), parameterId, newValue, restoring]
        {
            auto* editor = weak.get();

            if (editor == nullptr)
                return;

            if (parameterId == ParameterIds::gainScale)
                editor->topRow.showGainScaleInUse (newValue != unscaledPercent);
            else
                editor->followPreset (restoring);
        });
}

//======================================================================================================================
void VelmoraAudioProcessorEditor::makeBandPanels()
{
    bandPanels.rebuild();
}

TopRow::OutputState VelmoraAudioProcessorEditor::outputState() const
{
    if (model.mainBypass())
        return TopRow::OutputState::bypassed;

    return LevelMatchIcon::warns (model.outputGainDb(), audioProcessor.levelMatch().decibels())
               ? TopRow::OutputState::warning
               : TopRow::OutputState::plain;
}

void VelmoraAudioProcessorEditor::followMainBypass()
{
    topRow.showOutput (outputState());
}

void VelmoraAudioProcessorEditor::followSession()
{
    topRow.showComparison (audioProcessor.sessionState().comparisonASelected());
    showPresetLabels();
    mainWindow.room().rebuildTarget();
}

void VelmoraAudioProcessorEditor::followMinimised()
{
    if (model.minimised())
        setSize (getWidth(), EditorLayout::minHeight);
}

void VelmoraAudioProcessorEditor::followHeatMap()
{
    clock.forceRepaint();
}

void VelmoraAudioProcessorEditor::followPreset (bool restoring)
{
    if (audioProcessor.presets.currentPreset().id == Presets::noTargetsId)
        mainWindow.room().collapseControls();

    showPresetLabels();

    if (restoring)
        return;

    mainWindow.room().rebuildTarget();
    model.setSmartBandsReady (false, false);
    overlays.hideMenu();
}

void VelmoraAudioProcessorEditor::showPresetLabels()
{
    const auto& preset = audioProcessor.presets.currentPreset();

    presetLabels.show (audioProcessor.presets.groupName (preset), preset.name);
    topRow.showUserTarget (preset.id == Presets::userSettingId);
    resized();
}

//======================================================================================================================
void VelmoraAudioProcessorEditor::resized()
{
    const auto width = getWidth();
    const auto height = getHeight();

    if (width == 0 || height == 0)
        return;

    model.windowWidth = width;
    model.windowHeight = height;

    if (height > EditorLayout::minHeight)
        model.setMinimised (false, false);

    const auto layout = EditorLayout::of (width, height, presetLabels.typeWidth(), presetLabels.nameWidth());
    topRow.place (layout);
    headerLabel.setBounds (layout.header);
    presetLabels.place (layout);
    announcements.place (layout);
    mainWindow.setBounds (layout.mainWindow);
    analysisSlide.place();
    mainWindow.room().collapseControls();
    clock.forceRepaint();
}

void VelmoraAudioProcessorEditor::paint (juce::Graphics& g)
{
    const auto width = getWidth();
    const auto bottomBar = getHeight() - EditorLayout::bottomBarHeight;
    drawVertically (g, { 0, 0, width, EditorLayout::topBarHeight }, Palette::barLight, Palette::barDark);
    drawVertically (g,
                    { 0, EditorLayout::topBarHeight, width, bottomBar - EditorLayout::topBarHeight },
                    Palette::centreGradient,
                    Palette::barDark);
    drawVertically (g, { 0, bottomBar, width, EditorLayout::bottomBarHeight }, Palette::barDark, Palette::barLight);
    g.setColour (juce::Colour (Palette::separator));
    g.fillRect (EditorLayout::of (width, getHeight(), 0, 0).separator);
}

//======================================================================================================================
void VelmoraAudioProcessorEditor::buttonClicked (juce::Button* button)
{
    announcements.followExit();

    if (button == &topRow.compareButton)
        switchComparison();
    else if (button == &topRow.linkButton || button == &topRow.unlinkButton)
        audioProcessor.sessionState().compareCopy();
    else if (button == &topRow.burgerButton)
        showMenu();
    else if (button == &topRow.settingsButton)
        overlays.toggle (topRow.settingsButton, Place::settingsWindow);
    else if (button == &topRow.helpButton)
        overlays.toggle (topRow.helpButton, Place::helpWindow);
    else if (button == &topRow.analyseButton)
        model.interfaceState.analysisOpen ? hideAnalysis() : showAnalysis();
    else if (button == &topRow.outputGainButton)
        model.setParameterValue (ParameterIds::bypass, model.bypassParameterOn() ? 0.0f : 1.0f);
}

void VelmoraAudioProcessorEditor::switchComparison()
{
    auto& session = audioProcessor.sessionState();
    auto& room = mainWindow.room();
    room.resetForStateChange();
    session.compareSwitch (topRow.compareButton.getToggleState());
    room.rebuildControls();
    room.collapseControls();
    room.rebuildTarget();
    room.resized();
    topRow.showComparison (session.comparisonASelected());
    showPresetLabels();
    repaint();
}

void VelmoraAudioProcessorEditor::showMenu()
{
    // At once: the menu would stand in front of a panel that takes its time.
    dropDowns.hide (Place::outputGainPanel);
    dropDowns.hide (Place::gainScalePanel);
    overlays.showMenu();
}

//======================================================================================================================
void VelmoraAudioProcessorEditor::showAnalysis()
{
    overlays.closeWindowsAndButtons();
    topRow.analyseButton.setToggleState (true, juce::dontSendNotification);
    topRow.analyseButton.setToggled (true);
    analysisSlide.open();
}

void VelmoraAudioProcessorEditor::hideAnalysis()
{
    overlays.closeWindowsAndButtons();
    analysisSlide.close();
}

//======================================================================================================================
void VelmoraAudioProcessorEditor::actionListenerCallback (const juce::String& message)
{
    if (message == "CLOSE")
    {
        overlays.closeWindowsAndButtons();
    }
    else if (message == AnalysisWindow::closed)
    {
        // It may come after the user has closed it, and opened something else.
        if (model.interfaceState.analysisOpen)
            hideAnalysis();
    }
    else if (message == "SETTINGS-CLOSE")
    {
        overlays.closeWindowsAndButtons();
        applyToolTipSetting();
        audioProcessor.saveSettings();
    }
    else if (message == AnalysisWindow::targetSet)
    {
        adoptNewTarget();
    }
    else if (message.startsWith (AnalysisWindow::notice))
    {
        showMessage (message.fromFirstOccurrenceOf (AnalysisWindow::notice, false, false));
    }
}

void VelmoraAudioProcessorEditor::adoptNewTarget()
{
    audioProcessor.adoptUserTarget();
    mainWindow.room().forgetMeasurement();
    followPreset (false);
}

void VelmoraAudioProcessorEditor::applyToolTipSetting()
{
    toolTips.reset();

    if (! model.showToolTips)
        return;

    toolTips = std::make_unique<juce::TooltipWindow> (this);
    toolTips->setLookAndFeel (&lookAndFeel);
}

void VelmoraAudioProcessorEditor::keepTipOffPanels()
{
    if (toolTips == nullptr || ! toolTips->isVisible())
        return;

    // The framework puts a tip beside the pointer, where what the pointer has opened is to be read and used.
    for (const auto* panel :
         std::initializer_list<const juce::Component*> { mainWindow.component (Place::outputGainPanel),
                                                         mainWindow.component (Place::gainScalePanel),
                                                         &mainWindow.burgerMenu() })
    {
        const auto place = getLocalArea (panel, panel->getLocalBounds());

        if (panel->isVisible() && place.intersects (toolTips->getBounds()))
            toolTips->setTopLeftPosition (toolTips->getX(), place.getBottom() + gapBelowPanel);
    }
}

//======================================================================================================================
juce::PopupMenu VelmoraAudioProcessorEditor::makePresetMenu() const
{
    return PresetMenu::make (Presets::makeMenu (audioProcessor.presets, model.targetSetByUser),
                             audioProcessor.presets.currentPreset().id);
}

void VelmoraAudioProcessorEditor::choosePreset (int id)
{
    model.setParameterValue (ParameterIds::currentPreset, static_cast<float> (id));
}

void VelmoraAudioProcessorEditor::openPresetMenu()
{
    // Inside the window: a menu of its own would flicker, or be placed wrongly, under some window systems.
    auto menu = makePresetMenu();
    menu.setLookAndFeel (&lookAndFeel);
    menu.showMenuAsync (
        juce::PopupMenu::Options().withParentComponent (this).withTargetComponent (presetLabels.menuAnchor()),
        [weak = juce::WeakReference<VelmoraAudioProcessorEditor> (this)] (int id)
        {
            if (auto* editor = weak.get(); editor != nullptr && id > 0)
                editor->choosePreset (id);
        });
}

//======================================================================================================================
void VelmoraAudioProcessorEditor::mouseDown (const juce::MouseEvent& event)
{
    if (presetLabels.has (event.eventComponent) && ! model.interfaceState.settingsOpen)
        openPresetMenu();
}

HoverRules::Target VelmoraAudioProcessorEditor::hoverTargetOf (const juce::Component* component) const
{
    using HoverRules::Target;

    if (component == this)
        return Target::background;

    if (component == &mainWindow.room())
        return Target::room;

    if (component == &topRow.burgerButton)
        return Target::burgerButton;

    if (component == &topRow.outputGainButton)
        return Target::outputGainButton;

    return component == &topRow.gainScaleButton ? Target::gainScaleButton : Target::other;
}

void VelmoraAudioProcessorEditor::mouseEnter (const juce::MouseEvent& event)
{
    announcements.followEnter (event.eventComponent);
    enter (hoverTargetOf (event.eventComponent), event.eventComponent->isShowing());
    dropDowns.followMouse (event);
}

void VelmoraAudioProcessorEditor::hoverOver (HoverRules::Target target)
{
    enter (target, true);
}

void VelmoraAudioProcessorEditor::enter (HoverRules::Target target, bool targetShowing)
{
    const auto& state = model.interfaceState;
    HoverRules::Situation situation;
    situation.messageShowing = overlays.messageShowing();
    situation.analysisOpen = state.analysisOpen;
    situation.analysisSliding = state.analysisSliding;
    situation.overlayOpen = state.settingsOpen || state.helpOpen;
    situation.targetShowing = targetShowing;

    for (const auto action : HoverRules::actionsFor (target, situation))
        act (action);
}

void VelmoraAudioProcessorEditor::act (HoverRules::Action action)
{
    using HoverRules::Action;

    switch (action)
    {
        case Action::repaintAll:
            return repaint();
        case Action::collapseControls:
            return mainWindow.room().collapseControls();
        case Action::takeKeyboardFocus:
            // Within the window only: the host keeps its keys until the user works here.
            if (hasKeyboardFocus (true))
                grabKeyboardFocus();

            return;
        case Action::hideOutputGainPanel:
            return dropDowns.hide (Place::outputGainPanel);
        case Action::hideGainScalePanel:
            return dropDowns.hide (Place::gainScalePanel);
        case Action::showBurgerMenu:
            return showMenu();
        case Action::closeOverlays:
            return overlays.closeWindows();
        case Action::clearToggles:
            return topRow.clearToggles();
        case Action::hideBurgerMenu:
            return overlays.hideMenu();
        case Action::showOutputGainPanel:
            return dropDowns.show (Place::outputGainPanel, topRow.outputGainButton);
        case Action::showGainScalePanel:
            return dropDowns.show (Place::gainScalePanel, topRow.gainScaleButton);
    }
}

void VelmoraAudioProcessorEditor::mouseExit (const juce::MouseEvent& event)
{
    announcements.followExit();
    dropDowns.followMouse (event);
}

void VelmoraAudioProcessorEditor::mouseMove (const juce::MouseEvent& event)
{
    dropDowns.followMouse (event);
}

//======================================================================================================================
void VelmoraAudioProcessorEditor::timerCallback()
{
    if (clock.advanceStartup())
        announcements.askOnce();

    if (analysisSlide.isMoving())
    {
        analysisSlide.advance();
        repaint();
    }

    if (clock.advanceLevelIcon())
    {
        const LevelMatchIcon::Levels levels {
            model.outputGainDb(), audioProcessor.levelMatch().decibels(), model.soloActive(), model.mainBypass()
        };

        if (const auto warns = levelMatchIcon.update (levels))
            topRow.showOutput (*warns ? TopRow::OutputState::warning : TopRow::OutputState::plain);
    }

    overlays.advance();

    dropDowns.advance();
    keepTipOffPanels();
    mainWindow.room().serveTransport();

    const auto repaintForced = clock.advanceForcedRepaint();
    mainWindow.serveHeat (repaintForced);

    if (repaintForced)
        mainWindow.repaint();

    compositor->check();
}
