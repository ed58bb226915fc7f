#include "gui/help/HelpWindow.h"

#include "gui/look/Fonts.h"
#include "services/Product.h"

namespace
{
constexpr float rightsHeight = 10.0f;
constexpr float headingHeight = 15.0f;
} // namespace

HelpWindow::HelpWindow (const InterfaceState& interfaceState, const WebHosts& hosts)
    : OverlayPage ("HELP", 150, "CLOSE"),
      state (interfaceState),
      updateLink ("An update is available, click to download.", WebAddresses::download (hosts)),
      guideLink ("Online Guide", WebAddresses::onlineGuide (hosts)),
      centreLink ("Help Centre", WebAddresses::helpCentre (hosts)),
      manualLink ("User Manual", WebAddresses::userManual (hosts)),
      supportLink ("Support", WebAddresses::support (hosts))
{
    addText (versionLabel, {}, { 30, 75, 300, 20 });
    addText (upToDateLabel, "This version is up to date.", { 30, 109, 200, 20 });
    addText (linksLabel, "Links to Online Help", { 30, 135, 200, 40 });
    linksLabel.setFont (Fonts::bold (headingHeight));
    addText (rightsLabel, {}, { 30, 440, 450, 10 });
    rightsLabel.setFont (Fonts::regular (rightsHeight));

    updateLink.setBounds (34, 105, 280, 20);
    guideLink.setBounds (34, 170, 100, 20);
    centreLink.setBounds (34, 200, 150, 20);
    manualLink.setBounds (34, 230, 200, 20);
    supportLink.setBounds (34, 260, 50, 20);

    for (auto* link : { &updateLink, &guideLink, &centreLink, &manualLink, &supportLink })
        addAndMakeVisible (link);

    showBuildDate (Product::buildDate());
    refresh();
}

void HelpWindow::visibilityChanged()
{
    if (isVisible())
        refresh();
}

void HelpWindow::showBuildDate (const juce::String& date)
{
    versionLabel.setText ("This is SOLVANE version " + Product::version() + " : build " + date,
                          juce::dontSendNotification);
    rightsLabel.setText (Product::rights (date), juce::dontSendNotification);
}

void HelpWindow::refresh()
{
    updateLink.setVisible (state.updateAvailable);
    upToDateLabel.setVisible (! state.updateAvailable);
}

void HelpWindow::openAddressesWith (const std::function<void (const juce::URL&)>& open)
{
    for (auto* link : { &updateLink, &guideLink, &centreLink, &manualLink, &supportLink })
        link->openAddress = open;
}
