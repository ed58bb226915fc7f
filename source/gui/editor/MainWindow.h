#pragma once

#include "gui/heat/HeatStrips.h"
#include "gui/menu/BurgerMenu.h"
#include "gui/room/Solvane.h"

#include <memory>

/** The middle of the window: the room between its two frequency scales, which glow with what is heard, and what opens
    over it.

    What opens over the room is given to it from outside, one component for each place; a place without one stays
   closed. Message thread. */
class MainWindow final : public juce::Component, public juce::SettableTooltipClient
{
public:
    /** What can lie over the room. */
    enum class Place
    {
        outputGainPanel,
        gainScalePanel,
        helpWindow,
        settingsWindow,
        analysisWindow
    };

    static constexpr int stripWidth = StripPicture::width;

    explicit MainWindow (VelmoraAudioProcessor& processor);
    ~MainWindow() override;

    [[nodiscard]] Solvane& room() noexcept { return roomView; }
    [[nodiscard]] const Solvane& room() const noexcept { return roomView; }
    [[nodiscard]] BurgerMenu& burgerMenu() noexcept { return menu; }
    [[nodiscard]] HeatStrips& heatStrips() noexcept { return heat; }

    /** Puts a component into its place, hidden. */
    void fill (Place place, std::unique_ptr<juce::Component> component);
    [[nodiscard]] bool has (Place place) const { return component (place) != nullptr; }
    [[nodiscard]] juce::Component* component (Place place) const;

    /** Shows or hides what is in a place; does nothing where nothing is. */
    void show (Place place, bool shouldShow);
    [[nodiscard]] bool isShowingPlace (Place place) const;

    /** Where a place lies in a window of this size. */
    [[nodiscard]] static juce::Rectangle<int> boundsOf (Place place, int width, int height);

    /** Shows both pointers at a frequency, in the colour of the band that would be added there, or hides them. */
    void showPointers (float frequencyHz, bool shouldShow, juce::Colour colour);

    /** Shows a short text over the room, or takes it away. The place is in this component's pixels; what would leave
       the window is cut off, and the text stays within the rest. */
    void showNotice (const juce::String& text, juce::Rectangle<int> place);
    void hideNotice();
    [[nodiscard]] bool isShowingNotice() const { return noticeLabel.isVisible(); }
    /** One tick of the editor's timer: the strips follow what is heard.
        @param repaintForced whether the window is to be repainted whatever is heard */
    void serveHeat (bool repaintForced) { heat.tick (isShowing(), repaintForced); }

    void paint (juce::Graphics& g) override;
    void resized() override;

private:
    static constexpr int placeCount = 5;

    void repaintStrips();
    void drawFrequencies (juce::Graphics& g) const;
    void placePointer (juce::Label& label, bool left, float row);

    VelmoraAudioProcessor& processor;
    Solvane roomView;
    std::array<std::unique_ptr<juce::Component>, placeCount> places;
    juce::Component statusStrip;
    juce::Label pointerLabelLeft, pointerLabelRight, noticeLabel;
    BurgerMenu menu;
    HeatStrips heat; ///< last: its thread ends before what it draws for

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (MainWindow)
};
