#include "gui/analysis/AnalysisWindow.h"

#include "gui/analysis/UserTargetFile.h"
#include "gui/look/Fonts.h"
#include "gui/look/Icons.h"
#include "gui/look/Palette.h"
#include "gui/look/Tips.h"

#include <cmath>

namespace
{
using Messages = ReferenceTrackModel::Messages;

constexpr float titleHeight = 14.0f;
constexpr float statusHeight = 13.0f;
constexpr float backgroundRadius = 4.0f;
constexpr float iconAlpha = 0.8f;
constexpr int titleFromEdges = 60;
constexpr int statusWidth = 500;
constexpr auto targetEnding = ".target";

/** What stands behind the colon. */
juce::String argumentOf (const juce::String& message)
{
    return message.fromFirstOccurrenceOf (":", false, false);
}
} // namespace

void AnalysisWindow::BackgroundRoundedRectangle::paint (juce::Graphics& g)
{
    g.setColour (juce::Colour (Palette::trackGround));
    g.fillRoundedRectangle (getLocalBounds().toFloat(), backgroundRadius);
}

//======================================================================================================================
AnalysisWindow::AnalysisWindow (VelmoraAudioProcessor& owner)
    : processor (owner),
      pluginModel (owner.model),
      model (owner.referenceTracks),
      trackComponent (model),
      rows (*this, model),
      chooser (model, files),
      run (model)
{
    setTitle ("Reference tracks");

    // Before it looks what there is: a load that ends meanwhile is heard of afterwards.
    model.addActionListener (this);
    addParts();
    bindParts();

    for (const auto& track : model.tracks())
        addRow (*track);

    showListButtons();
    showSelected();
    transport.showPlaying (model.audition.isPlaying);
    enableListButtons (! model.audition.isPlaying);

    if (showLoadUnderWay())
        enableListButtons (false);

    updateTargetText();
}

AnalysisWindow::~AnalysisWindow()
{
    model.removeActionListener (this);
    model.onTrackRemoved = nullptr;

    // The run ends with nobody to take it over any more.
    if (run.isUnderWay())
    {
        run.wait();
        processor.adoptUserTarget();
    }
}

void AnalysisWindow::addParts()
{
    using Icons::Role;

    background.setInterceptsMouseClicks (false, false);
    addAndMakeVisible (background);
    addAndMakeVisible (trackComponent);
    addAndMakeVisible (transport);

    titleLabel.setFont (Fonts::regular (titleHeight));
    titleLabel.setColour (juce::Label::textColourId, juce::Colour (Palette::text));
    titleLabel.setBorderSize ({});
    titleLabel.setMinimumHorizontalScale (1.0f);
    titleLabel.setInterceptsMouseClicks (false, false);
    addChildComponent (titleLabel);

    setUp (addButton, "ADD REFERENCE TRACK", Tips::addTrack);
    setUp (deleteButton, "DELETE REFERENCE TRACK", Tips::deleteTrack);
    setUp (analyseButton, "ANALYSE", Tips::analyse);
    setUp (loadButton, "LOAD TARGET", Tips::loadTarget);
    setUp (saveButton, "SAVE TARGET", Tips::saveTarget);
    setUp (closeButton, "Close", Tips::closeAnalysis);

    for (auto* button : std::initializer_list<juce::Button*> { &loadButton, &saveButton, &closeButton })
        button->setVisible (true);

    addButton.setImages (Icons::svg (Role::trackAdd));
    deleteButton.setImages (Icons::svg (Role::trackDelete));
    closeButton.setImages (Icons::svg (Role::closeAnalysis));

    for (auto* button : { &addButton, &deleteButton, &closeButton })
        button->setAlphas (iconAlpha, 1.0f);

    statusLabel.setFont (Fonts::regular (statusHeight));
    statusLabel.setColour (juce::Label::textColourId, juce::Colour (Palette::secondaryLabel));
    statusLabel.setJustificationType (juce::Justification::centred);
    statusLabel.setBorderSize ({});
    addAndMakeVisible (statusLabel);
}

void AnalysisWindow::setUp (juce::Button& button, const char* title, const char* tip)
{
    button.setTitle (title);
    button.setTooltip (Tips::text (tip));
    addChildComponent (button);
}

void AnalysisWindow::bindParts()
{
    trackComponent.onDropButton = [this] { chooser.chooseFiles(); };
    addButton.onClick = [this] { chooser.chooseFiles(); };
    deleteButton.onClick = [this]
    {
        model.removeSelectedTrack();
        updateTargetText();
    };
    analyseButton.onClick = [this] { analyse(); };
    loadButton.onClick = [this] { askWhatToLoad(); };
    saveButton.onClick = [this] { askWhereToSave(); };
    closeButton.onClick = [this] { sendActionMessage (closed); };

    transport.onPress = [this] { clicks.press(); };
    transport.onClick = [this] { clickTransport(); };
    transport.onValueChange = [this] { moveTo (transport.getValue()); };

    rows.onSelected = [this] { showSelected(); };
    rows.onRenamed = [this] (const ReferenceTrack& track)
    {
        if (const auto selected = model.selectedTrack(); selected.get() == &track)
            showTitle (track.name());
    };

    run.onProgress = [this] (const TargetProgress& progress) { showProgress (progress); };
    run.onFinished = [this] (const TargetProgress& progress) { finishRun (progress); };
    model.onTrackRemoved = [this] (juce::int64 id) { forgetTrack (id); };
}

//======================================================================================================================
void AnalysisWindow::actionListenerCallback (const juce::String& message)
{
    if (message.startsWith ("SESSION_SAMPLERATE"))
    {
        trackComponent.showDropButton (true);
        trackComponent.showStatus ({});
    }
    else if (message.startsWith (Messages::fileNotFound))
    {
        trackComponent.showDropButton (false);
        trackComponent.showStatus ("FILE NOT FOUND: " + argumentOf (message));
    }
    else if (message.startsWith (Messages::fileNotFoundEnd))
    {
        trackComponent.showStatus ({});
    }
    else if (message.startsWith (Messages::loading))
    {
        enableListButtons (false);
    }
    else if (message.startsWith (Messages::initialLoadComplete))
    {
        showLoading (argumentOf (message));
    }
    else if (message.startsWith (Messages::waveformComplete))
    {
        takeTrack (argumentOf (message));
    }
}

void AnalysisWindow::showLoading (const juce::String& id)
{
    if (const auto track = model.findTrack (id.getLargeIntValue()); track != nullptr)
    {
        trackComponent.showDropButton (false);
        trackComponent.showStatus ("PROCESSING: " + track->name());
    }
}

void AnalysisWindow::takeTrack (const juce::String& id)
{
    const auto track = model.findTrack (id.getLargeIntValue());

    if (track == nullptr)
        return;

    model.selectTrack (track->id);
    trackComponent.showStatus ({});
    addRow (*track);
    showListButtons();
    showSelected();
    enableListButtons (true);
}

void AnalysisWindow::forgetTrack (juce::int64 id)
{
    rows.remove (id);
    trackComponent.showStatus ({});
    showListButtons();
    showSelected();

    // Nothing is left that could be paused.
    if (model.selectedTrack() == nullptr)
    {
        model.audition.isPlaying = false;
        transport.showPlaying (false);
    }

    showLoadUnderWay();
    showStatus ({});
}

bool AnalysisWindow::showLoadUnderWay()
{
    const auto selected = model.selectedTrack();

    if (selected == nullptr || selected->loaded)
        return false;

    showLoading (juce::String (selected->id));
    return true;
}

//======================================================================================================================
void AnalysisWindow::addRow (const ReferenceTrack& track)
{
    rows.add (track);
}

void AnalysisWindow::showSelected()
{
    const auto selected = model.selectedTrack();
    trackComponent.setTrack (selected);
    showTitle (selected != nullptr ? selected->name() : juce::String());
    transport.setEnabled (selected != nullptr);
    rows.markSelected();
    followPosition();
}

void AnalysisWindow::showTitle (const juce::String& name)
{
    const auto font = EditableTextButton::fontFor (name);
    titleLabel.setFont (font);
    titleLabel.setText (name, juce::dontSendNotification);
    titleLabel.setVisible (name.isNotEmpty());
    titleLabel.setBounds (28, 29, std::min (Fonts::widthOf (font, name), getWidth() - titleFromEdges), 20);
}

void AnalysisWindow::showListButtons()
{
    for (auto* button : std::initializer_list<juce::Button*> { &addButton, &deleteButton, &analyseButton })
        button->setVisible (! rows.isEmpty());
}

void AnalysisWindow::enableListButtons (bool enabled)
{
    // A target that is being made keeps them as they are.
    for (auto* button : { &addButton, &deleteButton })
        button->setEnabled (enabled && ! run.isUnderWay());

    analyseButton.setEnabled (! run.isUnderWay());
    showTargetButtons();
}

//======================================================================================================================
void AnalysisWindow::moveTo (double position)
{
    if (const auto track = model.selectedTrack(); track != nullptr)
        track->playPosition = clicks.moveTo (position, track->numSamples, track->playPosition);
}

void AnalysisWindow::clickTransport()
{
    const auto track = model.selectedTrack();

    if (track == nullptr || ! track->loaded)
        return;

    const auto plays = clicks.click (model.audition.isPlaying);

    if (plays == model.audition.isPlaying)
        return;

    model.audition.isPlaying = plays;
    enableListButtons (! plays);
    transport.showPlaying (plays);
}

void AnalysisWindow::followPosition()
{
    const auto track = model.selectedTrack();
    const auto samples = track != nullptr ? track->numSamples.load() : 0;
    const auto place = samples > 0 ? static_cast<double> (track->playPosition) / samples : 0.0;

    // Without a word: the audio thread and the user's hand alone write the position.
    transport.setValue (place, juce::dontSendNotification);
}

void AnalysisWindow::followHost()
{
    const auto seen = pluginModel.audioCallbackSeen.exchange (false);
    quietTicks = seen ? 0 : quietTicks + 1;

    // A host whose blocks last longer than a tick does call, if not between any two.
    const auto rate = pluginModel.sampleRate.load();
    const auto blockMs = rate > 0.0 ? 1000.0 * pluginModel.maxBlockSize / rate : 0.0;
    const auto ticksOfBlock = std::max (1, static_cast<int> (std::ceil (blockMs / intervalMs)));
    trackComponent.showHint (model.selectedTrack() != nullptr && quietTicks >= ticksOfBlock);
}

void AnalysisWindow::timerCallback()
{
    followHost();
    trackComponent.checkRate();

    if (model.audition.isPlaying && ! transport.isMouseButtonDown())
        followPosition();

    if (! run.isUnderWay() && situation() != shownSituation)
        updateTargetText();
}

void AnalysisWindow::visibilityChanged()
{
    if (! isVisible())
    {
        stopTimer();
        trackComponent.showHint (false);
        return;
    }

    quietTicks = 0;
    startTimer (intervalMs);
    followPosition();

    if (! run.isUnderWay())
        updateTargetText();
}

//======================================================================================================================
void AnalysisWindow::analyse()
{
    const auto tracks = model.tracks();
    const auto allLoaded = std::ranges::all_of (tracks, [] (const auto& track) { return track->loaded.load(); });

    if (run.isUnderWay() || tracks.empty() || ! allLoaded)
        return;

    showStatus ({});
    run.start();
    enableListButtons (false);
}

void AnalysisWindow::showProgress (const TargetProgress& progress)
{
    showStatus (TargetStatus::progressText (progress));

    for (auto* button :
         std::initializer_list<juce::Button*> { &addButton, &deleteButton, &analyseButton, &loadButton, &saveButton })
        button->setEnabled (false);
}

void AnalysisWindow::finishRun (const TargetProgress& progress)
{
    // Here and not by word alone: the editor may be gone before it hears.
    processor.adoptUserTarget();
    updateTargetText();
    enableListButtons (! model.audition.isPlaying);
    sendActionMessage (targetSet);
    sendActionMessage (closed);

    if (const auto text = TargetStatus::unmeasuredText (progress); text.isNotEmpty())
        sendActionMessage (notice + text);
}

TargetStatus::Situation AnalysisWindow::situation() const
{
    return { .targetSetByUser = pluginModel.targetSetByUser,
             .tracksLoaded = ! model.tracks().empty(),
             .noTargetChosen = processor.presets.currentPreset().id == Presets::noTargetsId };
}

void AnalysisWindow::updateTargetText()
{
    shownSituation = situation();

    // Not if another target has come since, or other tracks.
    const auto unmeasured = UserTargetFile::isMadeOf (model.tracks(), processor.presets)
                                ? TargetStatus::unmeasuredText (model.targetProgress())
                                : juce::String();
    showStatus (unmeasured.isEmpty() ? TargetStatus::text (shownSituation)
                                     : TargetStatus::text (shownSituation, unmeasured));
    showTargetButtons();
}

void AnalysisWindow::showTargetButtons()
{
    loadButton.setEnabled (! run.isUnderWay());
    saveButton.setEnabled (! run.isUnderWay() && pluginModel.targetSetByUser);
}

void AnalysisWindow::showStatus (const juce::String& text)
{
    statusLabel.setText (text, juce::dontSendNotification);

    // What does not fit can be read in full where the pointer rests.
    const auto fits = [this] (const juce::String& line)
    { return Fonts::widthOf (statusLabel.getFont(), line) <= statusWidth; };
    const auto lines = juce::StringArray::fromLines (text);
    statusLabel.setTooltip (std::ranges::all_of (lines, fits) ? juce::String() : text + "\n ");
}

//======================================================================================================================
void AnalysisWindow::askWhereToSave()
{
    using Browser = juce::FileBrowserComponent;
    files.ask ({ "Save the target as...",
                 "*",
                 Browser::saveMode | Browser::canSelectFiles | Browser::warnAboutOverwriting,
                 juce::String ("my") + targetEnding },
               [this] (const FileDialog::Files& chosen)
               {
                   if (! chosen.empty())
                       saveTarget (chosen.front());
               });
}

void AnalysisWindow::askWhatToLoad()
{
    using Browser = juce::FileBrowserComponent;
    files.ask ({ "Select a target file to load...", "*", Browser::openMode | Browser::canSelectFiles, {} },
               [this] (const FileDialog::Files& chosen)
               {
                   if (! chosen.empty())
                       loadTarget (chosen.front());
               });
}

void AnalysisWindow::saveTarget (const juce::File& file)
{
    const auto lacksEnding = file.getFileExtension().isEmpty();
    const auto named = lacksEnding ? file.withFileExtension (targetEnding) : file;

    // The dialog has asked about another name.
    if (lacksEnding && named.exists())
        return showStatus ("'" + named.getFileName() + "' is there already: choose it to replace it.");

    showStatus (UserTargetFile::save (named, processor.presets, model.tracks()).sentence);
}

void AnalysisWindow::loadTarget (const juce::File& file)
{
    // The dialog may have been open for long.
    if (run.isUnderWay())
        return;

    const auto outcome = UserTargetFile::load (file, processor.presets);

    if (! outcome.succeeded)
        return showStatus (outcome.sentence);

    processor.adoptUserTarget();
    sendActionMessage (targetSet);
    updateTargetText();
    showStatus (TargetStatus::text (shownSituation, outcome.sentence));
}

//======================================================================================================================
void AnalysisWindow::paint (juce::Graphics& g)
{
    g.fillAll (juce::Colour (Palette::analysis));
    g.setColour (juce::Colour (Palette::trackGround));
    g.fillRect (0, 0, getWidth(), 1);
}

void AnalysisWindow::resized()
{
    const auto width = getWidth();
    background.setBounds (25, 25, width - 47, 167);
    transport.setBounds (25, 50, width - 47, 139);
    trackComponent.setBounds (33, 50, width - 60, 117);
    showTitle (titleLabel.getText());
    addButton.setBounds (width - 71, 198, 24, 24);
    deleteButton.setBounds (width - 46, 198, 24, 24);
    rows.layOut (width);
    analyseButton.setBounds (width / 2 - 67, 230, 135, 20);
    loadButton.setBounds (width / 2 - 175, 230, 100, 20);
    saveButton.setBounds (width / 2 + 76, 230, 100, 20);
    statusLabel.setBounds (width / 2 - statusWidth / 2, 260, statusWidth, 30);
    closeButton.setBounds (static_cast<int> (width * 0.5 - 12.0), 295, 24, 24);
}
