#pragma once

#include "core/model/InterfaceState.h"
#include "gui/look/OverlayPage.h"
#include "gui/look/SVGHyperlinkButton.h"
#include "services/WebAddresses.h"

/** The page with the version, whether there is a newer one, and links to the help on the web. "Close" sends "CLOSE".
    Message thread. */
class HelpWindow final : public OverlayPage
{
public:
    /** @param interfaceState outlives this object */
    HelpWindow (const InterfaceState& interfaceState, const WebHosts& hosts);

    void visibilityChanged() override;

    /** Says when the product was built, and by that year whose it is. */
    void showBuildDate (const juce::String& date);

    /** Shows the link to an update where there is one. */
    void refresh();

    /** Takes the place of the browser for every link, as for a test. */
    void openAddressesWith (const std::function<void (const juce::URL&)>& open);

private:
    const InterfaceState& state;
    juce::Label versionLabel, upToDateLabel, linksLabel, rightsLabel;
    orvik::SVGHyperlinkButton updateLink, guideLink, centreLink, manualLink, supportLink;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (HelpWindow)
};
