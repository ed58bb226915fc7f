#pragma once

#include <juce_core/juce_core.h>

/** What the window says in a panel over the room, and what it says unasked, when. */
namespace EditorMessages
{
/** How often one instance explains the limits of Master. */
inline constexpr int masterMessageLimit = 6;

[[nodiscard]] juce::String masterLimits();
[[nodiscard]] juce::String bandsOutOfScale();
[[nodiscard]] juce::String analysisNotSet();
[[nodiscard]] juce::String noSmartBands();
[[nodiscard]] juce::String newProduct();
[[nodiscard]] juce::String update();

struct Situation
{
    bool notificationsWanted = true;
    bool menuOpen = false;
    bool bandChangedByUser = false;
    bool overlayOpen = false;
    bool smartBandsReady = false;
    bool transportPlaying = false;
    bool canUseMasterMode = true;
    bool masterMode = true;
    int masterMessageCount = 0;
};

/** Whether a change of "canUseMasterMode" is explained. */
[[nodiscard]] bool showsMasterLimits (const Situation& situation) noexcept;

/** Whether bands that a scale leaves outside are mentioned. */
[[nodiscard]] bool showsBandsOutOfScale (const Situation& situation) noexcept;

/** Whether smart bands are offered once they can be made: the host has stopped, and nothing lies over the room. */
[[nodiscard]] bool offersSmartBands (const Situation& situation) noexcept;
} // namespace EditorMessages
