#pragma once

#include "gui/band/MidSideControlPanel.h"
#include "gui/band/SolvaneControl.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

/** A room, an editor around it, and parameters in their steps, for one band without a display. */
class BandRig final : public IBandSurroundings
{
public:
    using Kind = Settings::Parameter;

    explicit BandRig (int index = 0) : band (index)
    {
        editor.setSize (680, 712);
        roomComponent.setBounds (25, 42, 630, 622);
        editor.addAndMakeVisible (roomComponent);
        make();
    }

    ~BandRig() override { control.reset(); }

    BandRig (const BandRig&) = delete;
    BandRig& operator= (const BandRig&) = delete;

    /** Builds the control as the room does: callbacks first, then the values. */
    void make()
    {
        control = std::make_unique<SolvaneControl> (band, juce::Colour (0xFF11A494), *this);
        bind();
        roomComponent.addAndMakeVisible (*control);
    }

    void place (int frequencyHz, float gainDb, float q = 1.0f, bool highShelf = false)
    {
        control->setHighShelf (highShelf);
        control->setQ (q);
        control->setFrequency (static_cast<float> (frequencyHz));
        control->setGain (gainDb);
        log.clear();
    }

    //==================================================================================================================
    // Mouse. Points are the control's own.

    [[nodiscard]] juce::MouseEvent event (juce::Point<int> point,
                                          juce::ModifierKeys mods = juce::ModifierKeys::leftButtonModifier,
                                          int clicks = 1,
                                          double timeMs = 0.0) const
    {
        const juce::Time time (static_cast<juce::int64> (timeMs));
        return { juce::Desktop::getInstance().getMainMouseSource(),
                 point.toFloat(),
                 mods,
                 juce::MouseInputSource::defaultPressure,
                 juce::MouseInputSource::defaultOrientation,
                 juce::MouseInputSource::defaultRotation,
                 juce::MouseInputSource::defaultTiltX,
                 juce::MouseInputSource::defaultTiltY,
                 control.get(),
                 control.get(),
                 time,
                 point.toFloat(),
                 time,
                 clicks,
                 false };
    }

    [[nodiscard]] static juce::ModifierKeys left (int further = 0)
    {
        return { juce::ModifierKeys::leftButtonModifier | further };
    }

    void press (juce::Point<int> point, int further = 0) { control->mouseDown (event (point, left (further))); }

    /** Drags to a row of the room, wherever the control is by now. */
    void dragToRow (int row) { control->mouseDrag (event ({ 40, row - control->getY() })); }

    void releaseAtRow (int row, int further = 0)
    {
        control->mouseUp (event ({ 40, row - control->getY() }, left (further)));
    }

    void hover (juce::Point<int> point, int modifiers = 0)
    {
        control->mouseMove (event (point, juce::ModifierKeys (modifiers)));
    }

    void doubleClick (juce::Point<int> point, int further = 0)
    {
        control->mouseDoubleClick (event (point, left (further), 2));
    }

    void turnWheel (float deltaY, double timeMs)
    {
        juce::MouseWheelDetails wheel {};
        wheel.deltaY = deltaY;
        control->mouseWheelMove (event ({ 40, 40 }, {}, 1, timeMs), wheel);
    }

    void tick (int count = 1)
    {
        for (int i = 0; i < count; ++i)
            control->timerCallback();
    }

    /** Types over the read-out's text editor and presses Enter. */
    void type (const juce::String& text)
    {
        auto* const textEditor = control->panel().readout.getCurrentTextEditor();

        if (textEditor == nullptr)
            throw std::runtime_error ("nothing is open for typing");

        textEditor->setText (text, false);
        control->panel().readout.hideEditor (false);
    }

    //==================================================================================================================
    // Parts of the control, as points within it

    [[nodiscard]] const BandLayout& layout() const { return control->bandState().layout; }
    [[nodiscard]] juce::Point<int> onBody() const { return { 40, layout().topEdge.getBottom() + 10 }; }
    [[nodiscard]] juce::Point<int> onLine() const { return { 40, layout().lineY() }; }
    [[nodiscard]] juce::Point<int> onTopEdge() const { return layout().topEdge.getCentre().withX (40); }
    [[nodiscard]] juce::Point<int> onBottomEdge() const { return layout().bottomEdge.getCentre().withX (40); }
    [[nodiscard]] juce::String text() const { return control->panel().readout.getText(); }

    //==================================================================================================================
    // The room

    RoomGeometry geometry() const override { return room; }
    GainLimits gainLimits() const override { return { mode, gainScale, room.scaleDb }; }
    bool isActive (int) const noexcept override { return active; }
    bool scaleAnimating() const override { return animating; }
    bool takeRebase() override { return std::exchange (rebase, false); }
    bool wheelReversed() const override { return reversed; }
    bool bandsAlwaysShown() const override { return alwaysShown; }
    bool stereo() const override { return stereoBus; }
    bool overlayOpen() const override { return overlay; }
    void masterExceeded() override { ++mastersExceeded; }
    void setTypedGain (float gainDb) override
    {
        typedGainDb = gainDb;
        note ("typed", gainDb);
    }
    SolvaneControlPanel* freeOverlapPanel (OverlapPanel which) override
    {
        const auto upper = which == OverlapPanel::upper;
        return (upper ? upperInUse : lowerInUse) ? nullptr : (upper ? upperPanel.get() : lowerPanel.get());
    }
    void setOverlapPanelInUse (OverlapPanel which, bool inUse) override
    {
        (which == OverlapPanel::upper ? upperInUse : lowerInUse) = inUse;
    }
    void rebuildOverlapPanels() override { ++overlapRebuilds; }
    MidSideControlPanel* midSidePanel() override { return midSide.get(); }

    void makeOverlapPanels()
    {
        upperPanel = std::make_unique<SolvaneControlPanel> (SolvaneControlPanel::Shape::overlap);
        lowerPanel = std::make_unique<SolvaneControlPanel> (SolvaneControlPanel::Shape::overlap);
        editor.addChildComponent (*upperPanel);
        editor.addChildComponent (*lowerPanel);
    }

    void makeMidSidePanel()
    {
        midSide = std::make_unique<MidSideControlPanel>();
        midSide->onValue = [this] (int, float value)
        {
            note ("midSide", value);
            control->setMidSide (value);
        };
        editor.addChildComponent (*midSide);
    }

    /** How often a line stands in the log. */
    [[nodiscard]] int countOf (const std::string& line) const
    {
        return static_cast<int> (std::count (log.begin(), log.end(), line));
    }

    const int band;
    RoomGeometry room;
    FilterMode mode = FilterMode::mix;
    float gainScale = 100.0f;
    bool active = true;
    bool animating = false;
    bool rebase = false;
    bool reversed = false;
    bool alwaysShown = false;
    bool stereoBus = true;
    bool overlay = false;
    bool upperInUse = false;
    bool lowerInUse = false;
    int mastersExceeded = 0;
    int overlapRebuilds = 0;
    int leftCount = 0;
    std::optional<float> typedGainDb;
    float lastNormalisedQ = 0.0f;
    float lastRow = 0.0f;

    /** What the control asked for, in order: "begin 1", "gain -3.0", "collapse" and the like. */
    std::vector<std::string> log;

    juce::Component editor;
    juce::Component roomComponent;
    std::unique_ptr<SolvaneControlPanel> upperPanel, lowerPanel;
    std::unique_ptr<MidSideControlPanel> midSide;
    std::unique_ptr<SolvaneControl> control;

private:
    void note (const std::string& what) { log.push_back (what); }
    void note (const std::string& what, float value) { note (what + " " + juce::String (value, 1).toStdString()); }

    static float inTenths (float value) { return std::round (value * 10.0f) / 10.0f; }

    void bind()
    {
        control->onGain = [this] (int, float depth)
        {
            const auto gain = typedGainDb ? *typedGainDb : gainAtDepth (depth, room.scaleDb);
            typedGainDb.reset();
            const auto stored = inTenths (std::clamp (gain, -12.0f, 12.0f));
            note ("gain", stored);
            control->parameterChanged ("band_gain_" + juce::String (band), stored);
        };
        control->onQ = [this] (int, float value)
        {
            lastNormalisedQ = value;
            const auto stored = inTenths (std::clamp (value, 0.0f, 1.0f) * 4.5f + 0.5f);
            note ("q", stored);
            control->parameterChanged ("band_Q_" + juce::String (band), stored);
        };
        control->onFrequency = [this] (int, float position, bool isRow)
        {
            lastRow = position;
            const auto from = static_cast<float> (control->bandState().frequencyHz);
            const auto gain = control->bandState().gainDb;
            const auto wanted = isRow ? frequencyUnderHand (room, from, position, gain, {}) : std::optional (position);
            const auto stored = 320.0f + 10.0f * std::round ((std::clamp (*wanted, 320.0f, 20000.0f) - 320.0f) / 10.0f);
            note (isRow ? "row" : "frequency", stored);
            control->setFrequency (stored);
        };
        control->onGestureBegin = [this] (int, Kind kind)
        { note ("begin " + std::to_string (static_cast<int> (kind))); };
        control->onGestureEnd = [this] (int, Kind kind) { note ("end " + std::to_string (static_cast<int> (kind))); };
        control->onClicked = [this] (int) { control->setSelected (true); };
        control->onLeft = [this]
        {
            ++leftCount;
            control->collapse();
        };
        control->onMouseMove = [this] (int, juce::Point<int> point)
        { note ("move " + std::to_string (point.x) + " " + std::to_string (point.y)); };
        control->onCtrlClick = [this] (int, int x, int y)
        { note ("click " + std::to_string (x) + " " + std::to_string (y)); };
        control->onSolo = [this] (int, bool on) { note (on ? "solo on" : "solo off"); };
        control->onBypass = [this] (int, bool on) { note (on ? "bypass on" : "bypass off"); };
        control->onHighShelf = [this] (int, bool on) { note (on ? "shelf on" : "shelf off"); };
        control->onClose = [this] (int) { note ("close"); };
        control->onCollapse = [this] (int which, bool) { note ("collapse " + std::to_string (which)); };
        control->onAddBandHere = [this] (juce::Point<int> point)
        { note ("add " + std::to_string (point.x) + " " + std::to_string (point.y)); };
    }
};
