#include "gui/editor/HoverRules.h"

std::vector<HoverRules::Action> HoverRules::actionsFor (Target target, const Situation& situation)
{
    std::vector<Action> actions;

    if (situation.messageShowing)
        actions.push_back (Action::repaintAll);

    const auto add = [&actions] (std::initializer_list<Action> more)
    { actions.insert (actions.end(), more.begin(), more.end()); };

    if (target == Target::background && ! situation.analysisSliding && ! situation.analysisOpen)
        add ({ Action::collapseControls, Action::takeKeyboardFocus });

    if (target == Target::room)
        add ({ Action::hideOutputGainPanel, Action::hideGainScalePanel });

    if (target == Target::burgerButton && situation.targetShowing && ! situation.overlayOpen)
        add ({ Action::showBurgerMenu });

    if (target == Target::outputGainButton && situation.targetShowing)
        add ({ Action::closeOverlays,
               Action::clearToggles,
               Action::hideBurgerMenu,
               Action::hideGainScalePanel,
               Action::showOutputGainPanel });

    if (target == Target::gainScaleButton && situation.targetShowing)
        add ({ Action::closeOverlays,
               Action::clearToggles,
               Action::hideBurgerMenu,
               Action::hideOutputGainPanel,
               Action::showGainScalePanel });

    return actions;
}
