#pragma once

#include "gui/look/Fonts.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <atomic>

/** The interface's dark look. Every standard widget is drawn here; what it does not draw stays as the framework has it.

    Names and ids of components choose between variants: a text button whose name holds "bold" or "small", the sliders
    "gain-scale", "output-gain", and "play" or "pause", the labels "readout" and "track", which keeps its own font, and
    labels whose id says which way they point ("left", "right", "leftTop", ...). Paints on whatever thread holds the
    message lock. */
class VelmoraLookandFeel final : public juce::LookAndFeel_V3
{
public:
    /** @param levelMatchPointer where the output slider's pointer stands, as a linear gain; outlives this object */
    explicit VelmoraLookandFeel (const std::atomic<float>& levelMatchPointer);

    /** Fonts of the interface by height in pixels. */
    [[nodiscard]] juce::Font regular (float height) const;
    [[nodiscard]] juce::Font bold (float height) const;

    /** Where a slider's tick stands between the ends of its track, and its colour by where the thumb is.
        @param decibels -10 to 10 */
    [[nodiscard]] static float tickPosition (int decibels, float trackStart, float trackLength) noexcept;
    [[nodiscard]] static juce::Colour tickColour (float tick, float thumb, float trackLength) noexcept;

    //==================================================================================================================
    juce::Font getTextButtonFont (juce::TextButton& button, int height) override;
    void drawButtonText (juce::Graphics& g, juce::TextButton& button, bool over, bool down) override;
    void drawButtonBackground (juce::Graphics& g,
                               juce::Button& button,
                               const juce::Colour& colour,
                               bool over,
                               bool down) override;

    int getSliderThumbRadius (juce::Slider& slider) override;
    juce::Slider::SliderLayout getSliderLayout (juce::Slider& slider) override;
    void drawLinearSliderBackground (juce::Graphics& g,
                                     int x,
                                     int y,
                                     int width,
                                     int height,
                                     float position,
                                     float minPosition,
                                     float maxPosition,
                                     juce::Slider::SliderStyle style,
                                     juce::Slider& slider) override;
    void drawLinearSliderThumb (juce::Graphics& g,
                                int x,
                                int y,
                                int width,
                                int height,
                                float position,
                                float minPosition,
                                float maxPosition,
                                juce::Slider::SliderStyle style,
                                juce::Slider& slider) override;

    juce::Font getLabelFont (juce::Label& label) override;
    void drawLabel (juce::Graphics& g, juce::Label& label) override;

    juce::Font getPopupMenuFont() override;
    int getPopupMenuBorderSize() override;
    void drawPopupMenuBackground (juce::Graphics& g, int width, int height) override;
    void drawPopupMenuItem (juce::Graphics& g,
                            const juce::Rectangle<int>& area,
                            bool isSeparator,
                            bool isActive,
                            bool isHighlighted,
                            bool isTicked,
                            bool hasSubMenu,
                            const juce::String& text,
                            const juce::String& shortcut,
                            const juce::Drawable* icon,
                            const juce::Colour* textColour) override;
    void drawPopupMenuSectionHeader (juce::Graphics& g,
                                     const juce::Rectangle<int>& area,
                                     const juce::String& title) override;
    void drawPopupMenuUpDownArrow (juce::Graphics& g, int width, int height, bool isUp) override;
    void getIdealPopupMenuItemSize (const juce::String& text,
                                    bool isSeparator,
                                    int standardHeight,
                                    int& width,
                                    int& height) override;

    juce::Rectangle<int>
    getTooltipBounds (const juce::String& text, juce::Point<int> position, juce::Rectangle<int> parentArea) override;
    void drawTooltip (juce::Graphics& g, const juce::String& text, int width, int height) override;

    void drawCornerResizer (juce::Graphics& g, int width, int height, bool over, bool dragging) override;
    void fillTextEditorBackground (juce::Graphics& g, int width, int height, juce::TextEditor& editor) override;
    void drawTextEditorOutline (juce::Graphics& g, int width, int height, juce::TextEditor& editor) override;

private:
    void drawLevelMatchPointer (juce::Graphics& g, juce::Slider& slider, float trackBottom) const;
    void drawReadout (juce::Graphics& g, juce::Label& label);
    void drawPointer (juce::Graphics& g, juce::Label& label);

    const std::atomic<float>& levelMatch;
    const juce::SharedResourcePointer<Typefaces> typefaces;
    const juce::Font regularFont;
    const juce::Font boldFont;
    const float regularScale = 1.0f;
    const float boldScale = 1.0f;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (VelmoraLookandFeel)
};
