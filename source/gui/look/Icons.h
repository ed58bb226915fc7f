#pragma once

#include <juce_core/juce_core.h>

/** The icons of the interface as SVG texts. One set: white, strokes of 2 on a grid of 1, drawn at the size of the
    control that shows them, so that straight lines fill whole pixels. A second colour only where it carries a state. */
namespace Icons
{
enum class Role
{
    logo,
    settings,
    help,
    helpUpdate,
    copyToA, ///< shown while B is selected
    copyToB, ///< shown while A is selected
    compareA,
    compareADown,
    compareB,
    compareBDown,
    burger,
    analyse,
    analyseUser, ///< while a target of the user's is chosen
    output,
    outputWarning,
    outputBypassed,
    gainScale,
    bandActive,
    bandBypassed,
    soloOff,
    soloOn,
    bell,
    shelf,
    mid,
    side,
    website,
    websiteNews,
    phaseLinear,
    phaseLinearDown,
    phaseMinimum,
    phaseMinimumDown,
    modeMix,
    modeMixDown,
    modeMaster,
    modeMasterDown,
    switchOff,
    switchOffDown,
    switchOn,
    switchOnDown,
    close,
    closeOver,
    closeDown,
    closeAnalysis,
    trackAdd,
    trackDelete,
    dropFiles,
    cursorAdd,
    cursorRemove,
    cursorMove
};

inline constexpr int roleCount = static_cast<int> (Role::cursorMove) + 1;

[[nodiscard]] juce::String svg (Role role);
} // namespace Icons
