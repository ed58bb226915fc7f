#pragma once

#include "gui/band/TypingFocus.h"
#include "gui/look/SVGButton.h"

#include <juce_gui_basics/juce_gui_basics.h>

/** What a panel asks of the band that it serves. */
class IPanelOwner
{
public:
    virtual ~IPanelOwner() = default;

    virtual void panelSoloClicked() = 0;
    virtual void panelBypassClicked() = 0;
    virtual void panelShelfClicked() = 0;

    /** The panel may be gone when this returns. */
    virtual void panelCloseClicked() = 0;
};

/** The small panel across a band's line: read-out, bypass, solo, filter type and delete. Bands that hang too near to
    ceiling or floor borrow one of two that lie over the bars of the window.

    It fades in and out in steps of 20 ms, which its band counts. Message thread. */
class SolvaneControlPanel final : public juce::Component,
                                  public juce::SettableTooltipClient,
                                  private juce::Button::Listener
{
public:
    /** How the panel is drawn: across the band's line, or flat over one of the bars. */
    enum class Shape
    {
        own,
        overlap
    };

    explicit SolvaneControlPanel (Shape shape = Shape::own);
    ~SolvaneControlPanel() override;

    /** Fills the panel for a band. @param enableHighShelf the band is high enough to be a shelf */
    void setBand (int band, const juce::String& title, float gainDb, juce::Colour colour, bool enableHighShelf);

    /** Whose clicks these are; null while the panel serves nobody. */
    void setOwner (IPanelOwner* newOwner);

    void setSolo (bool state);
    void setBypass (bool state);
    void setHighShelf (bool state);
    void setShelfEnabled (bool state);
    void setColour (juce::Colour newColour);

    /** The read-out's text, and whether it needs the room for a long one. */
    void showText (const juce::String& text, bool wide);

    /** Whether a click opens the read-out for typing. */
    void setEditable (bool state);

    void openEditor();

    /** Closes an open text editor without taking its text. */
    void closeEditor();

    /** While it is held, what was typed stays in the read-out whatever else would be shown: its editor is gone by then,
        and who listens has not heard of it yet. */
    void holdText (bool state) noexcept { textHeld = state; }

    [[nodiscard]] bool isTyping() const { return readout.isBeingEdited(); }

    /** Shows or hides the panel; the fade takes five ticks. */
    void setShown (bool state);

    /** The same without a fade. */
    void showAtOnce (bool state);
    [[nodiscard]] bool isShown() const noexcept { return shown; }

    /** One step of the fade; false if there was none left to go. */
    bool tick();
    [[nodiscard]] bool settled() const noexcept { return fadeStep == (shown ? fadeSteps : 0); }

    /** The delete button, which the panel draws and tests itself. */
    [[nodiscard]] juce::Rectangle<int> closeArea() const noexcept;

    void paint (juce::Graphics& g) override;
    void resized() override;
    void mouseMove (const juce::MouseEvent& event) override;
    void mouseExit (const juce::MouseEvent& event) override;
    void mouseUp (const juce::MouseEvent& event) override;
    juce::String getTooltip() override;

    juce::Label readout;
    orvik::SVGButton bypassButton { "Bypass" };
    orvik::SVGButton soloButton { "Solo" };
    orvik::SVGButton filterTypeButton { "FilterType" };

private:
    static constexpr int fadeSteps = 5;

    void buttonClicked (juce::Button* button) override;
    void setOverClose (bool state);
    void applyFade();

    const Shape shape;
    TypingFocus typingFocus { readout };
    IPanelOwner* owner = nullptr;
    juce::Colour colour;
    int fadeStep = 0;
    bool shown = false;
    bool wide = false;
    bool overClose = false;
    bool textHeld = false;
    bool soloIcon = false;
    bool bypassIcon = false;
    bool shelfIcon = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (SolvaneControlPanel)
};
