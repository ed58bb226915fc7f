#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>

namespace orvik
{
/** A button that is an icon. The documents are parsed once, when they are set.

    An icon keeps its place within its document's view box, which is fitted into the button's bounds: drawn at the
    button's own size, its lines meet the pixels. Under the mouse it brightens to full alpha over some frames. Message
    thread. */
class SVGButton : public juce::Button, private juce::Timer
{
public:
    /** @param name what the button is called, also by a screen reader */
    explicit SVGButton (const juce::String& name);

    /** An empty text leaves that image unset, and the normal one takes its place. What is no SVG draws nothing. */
    void setImages (const juce::String& normalSvg, const juce::String& overSvg = {}, const juce::String& downSvg = {});

    /** Colours that the icon's own colour takes when off and when on. Until they are set, the icon is white. */
    void setColours (juce::Colour colour, juce::Colour colourWhenToggled);

    /** Alpha of the button when off and when on. Full until set. */
    void setAlphas (float alphaWhenOff, float alphaWhenOn);

    /** Takes the colour and the alpha of the state. */
    void setToggled (bool state);

    [[nodiscard]] bool isToggled() const noexcept { return toggled; }

    /** One frame of a fade; the timer's work, for those who keep time themselves. */
    void advanceFade();

    void paintButton (juce::Graphics& g, bool over, bool down) override;
    void mouseEnter (const juce::MouseEvent& event) override;
    void mouseExit (const juce::MouseEvent& event) override;
    void focusGained (FocusChangeType cause) override;
    void focusLost (FocusChangeType cause) override;

protected:
    /** The image for a state; null draws nothing. */
    [[nodiscard]] virtual const juce::Drawable* imageFor (bool over, bool down) const;

    /** Replaces a colour in every image of the button; true if one held it. */
    virtual bool replaceColour (juce::Colour from, juce::Colour to);

    [[nodiscard]] static std::unique_ptr<juce::Drawable> parse (const juce::String& svg);

    /** Brings a newly parsed image to the colour that the others have. */
    void adopt (juce::Drawable* image) const;

    void drawFocusRing (juce::Graphics& g) const;

private:
    void timerCallback() override;
    void fadeTo (float alpha);
    void showColour (juce::Colour colour);
    [[nodiscard]] float restingAlpha() const noexcept { return toggled ? onAlpha : offAlpha; }

    std::unique_ptr<juce::Drawable> normalImage, overImage, downImage;
    juce::Colour imageColour;
    juce::Colour toggledColour;
    juce::Colour shownColour;
    float offAlpha = 1.0f;
    float onAlpha = 1.0f;
    float fadeTarget = 1.0f;
    bool toggled = false;
    bool focusShown = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (SVGButton)
};
} // namespace orvik
