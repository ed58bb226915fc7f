#pragma once

#include "gui/look/SVGButton.h"

namespace orvik
{
/** An icon with two states, each with an image of its own and one for while it is pressed. Message thread. */
class SVGCheckbox final : public SVGButton
{
public:
    explicit SVGCheckbox (const juce::String& name);

    /** An empty text for a pressed image leaves the state's normal one in its place. */
    void setImages (const juce::String& offSvg,
                    const juce::String& offDownSvg,
                    const juce::String& onSvg,
                    const juce::String& onDownSvg);

protected:
    [[nodiscard]] const juce::Drawable* imageFor (bool over, bool down) const override;
    bool replaceColour (juce::Colour from, juce::Colour to) override;

private:
    std::unique_ptr<juce::Drawable> onImage, onDownImage;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (SVGCheckbox)
};
} // namespace orvik
