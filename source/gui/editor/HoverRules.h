#pragma once

#include <vector>

/** What happens when the mouse enters a part of the window. A plain table: it knows no component. */
namespace HoverRules
{
enum class Target
{
    background, ///< the editor itself, between and beside everything
    room,
    burgerButton,
    outputGainButton,
    gainScaleButton,
    other
};

/** What is known at that moment. */
struct Situation
{
    bool messageShowing = false;
    bool analysisOpen = false;
    bool analysisSliding = false;
    bool overlayOpen = false;

    /** The part that was entered is on the screen. */
    bool targetShowing = true;
};

enum class Action
{
    repaintAll,
    collapseControls,
    takeKeyboardFocus,
    hideOutputGainPanel,
    hideGainScalePanel,
    showBurgerMenu,
    closeOverlays,
    clearToggles,
    hideBurgerMenu,
    showOutputGainPanel,
    showGainScalePanel
};

/** What to do, in order. */
[[nodiscard]] std::vector<Action> actionsFor (Target target, const Situation& situation);
} // namespace HoverRules
