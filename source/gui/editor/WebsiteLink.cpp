#include "gui/editor/WebsiteLink.h"

#include "gui/look/Icons.h"
#include "gui/look/Tips.h"

namespace
{
constexpr float restingAlpha = 0.8f;

/** A host as people say it. */
juce::String nameOf (const juce::URL& website)
{
    const auto host = website.getDomain();
    return host.startsWith ("www.") ? host.substring (4) : host;
}
} // namespace

WebsiteLink::WebsiteLink (const WebHosts& hosts)
    : icon ("Website", WebAddresses::website (hosts)),
      text (nameOf (WebAddresses::website (hosts)), WebAddresses::website (hosts))
{
    icon.setTitle ("Visit our website");

    for (auto* part : { &icon, &text })
        part->setAlphas (restingAlpha, 1.0f);

    // One stop is enough for whoever works with the keyboard.
    text.setWantsKeyboardFocus (false);
    showNews (false);
}

void WebsiteLink::addTo (juce::Component& parent, juce::MouseListener& mouse)
{
    for (auto* part : { &icon, &text })
    {
        parent.addAndMakeVisible (part);
        part->addMouseListener (&mouse, false);
    }
}

void WebsiteLink::place (const EditorLayout& layout)
{
    icon.setBounds (layout.websiteIcon);
    text.setBounds (layout.websiteLink);
}

bool WebsiteLink::has (const juce::Component* component) const
{
    return component == &icon || component == &text;
}

void WebsiteLink::showNews (bool available)
{
    icon.setImages (Icons::svg (available ? Icons::Role::websiteNews : Icons::Role::website));

    for (auto* part : { &icon, &text })
        part->setTooltip (Tips::text (available ? Tips::newProduct : Tips::website));
}
