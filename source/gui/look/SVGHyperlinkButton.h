#pragma once

#include "gui/look/SVGButton.h"

namespace orvik
{
/** A link: an icon, or, without one, its text at the left, underlined under the mouse. A click opens the address in the
    user's browser. Message thread. */
class SVGHyperlinkButton final : public SVGButton
{
public:
    /** @param name the text that is shown where there is no icon */
    SVGHyperlinkButton (const juce::String& name, juce::URL address);

    void setURL (juce::URL address) { url = std::move (address); }
    [[nodiscard]] const juce::URL& getURL() const noexcept { return url; }

    /** Takes the place of the browser, as for a test. */
    std::function<void (const juce::URL&)> openAddress;

    void paintButton (juce::Graphics& g, bool over, bool down) override;
    void clicked() override;

private:
    juce::URL url;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (SVGHyperlinkButton)
};
} // namespace orvik
