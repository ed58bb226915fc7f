#pragma once

#include "gui/editor/EditorLayout.h"
#include "gui/look/SVGHyperlinkButton.h"
#include "services/WebAddresses.h"

/** The way to the maker's website at the window's bottom right: an icon and the site's name. A click on either opens
   the user's browser. Message thread. */
class WebsiteLink
{
public:
    explicit WebsiteLink (const WebHosts& hosts);

    /** @param mouse hears of the pointer over both parts; outlives this object */
    void addTo (juce::Component& parent, juce::MouseListener& mouse);
    void place (const EditorLayout& layout);

    [[nodiscard]] bool has (const juce::Component* component) const;

    /** Whether there is a new product to look at. */
    void showNews (bool available);

    orvik::SVGHyperlinkButton icon, text;
};
