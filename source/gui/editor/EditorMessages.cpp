#include "gui/editor/EditorMessages.h"

juce::String EditorMessages::masterLimits()
{
    return juce::String::fromUTF8 ("Master filters can only be applied where gain is less than \u00B14dB and Q is less "
                                   "than 1.5.\n\nChange Filter Mode to 'Mix' for adjustments above \u00B14dB.");
}

juce::String EditorMessages::bandsOutOfScale()
{
    return "EQ bands not within selected scale.";
}

juce::String EditorMessages::analysisNotSet()
{
    return "Analysis not set.";
}

juce::String EditorMessages::noSmartBands()
{
    return juce::String::fromUTF8 ("Targets less than \u00B10.5dB. Did not generate Smart Bands.");
}

juce::String EditorMessages::newProduct()
{
    return "A new product is available. Click the link to visit our website.";
}

juce::String EditorMessages::update()
{
    return "An update is available. Click the '?' icon to view the link.";
}

bool EditorMessages::showsMasterLimits (const Situation& situation) noexcept
{
    return situation.notificationsWanted && situation.bandChangedByUser && ! situation.menuOpen
           && ! situation.canUseMasterMode && situation.masterMode && situation.masterMessageCount < masterMessageLimit;
}

bool EditorMessages::showsBandsOutOfScale (const Situation& situation) noexcept
{
    return situation.notificationsWanted && ! situation.menuOpen;
}

bool EditorMessages::offersSmartBands (const Situation& situation) noexcept
{
    return situation.notificationsWanted && situation.smartBandsReady && ! situation.menuOpen && ! situation.overlayOpen
           && ! situation.transportPlaying;
}
