#include "gui/editor/HoverRules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using HoverRules::Action;
using HoverRules::actionsFor;
using HoverRules::Situation;
using HoverRules::Target;
using testing::ElementsAre;
using testing::IsEmpty;

TEST (HoverRulesTest, theBackgroundCollapsesTheBands)
{
    EXPECT_THAT (actionsFor (Target::background, {}),
                 ElementsAre (Action::collapseControls, Action::takeKeyboardFocus));
}

TEST (HoverRulesTest, notWhileTheAnalysisIsOpenOrOnItsWay)
{
    Situation situation;
    situation.analysisOpen = true;
    EXPECT_THAT (actionsFor (Target::background, situation), IsEmpty());
    situation.analysisOpen = false;
    situation.analysisSliding = true;
    EXPECT_THAT (actionsFor (Target::background, situation), IsEmpty());
}

TEST (HoverRulesTest, theRoomHidesBothPanels)
{
    EXPECT_THAT (actionsFor (Target::room, {}), ElementsAre (Action::hideOutputGainPanel, Action::hideGainScalePanel));
}

TEST (HoverRulesTest, theBurgerButtonOpensItsMenuUnlessAWindowIsOpen)
{
    Situation situation;
    EXPECT_THAT (actionsFor (Target::burgerButton, situation), ElementsAre (Action::showBurgerMenu));
    situation.overlayOpen = true;
    EXPECT_THAT (actionsFor (Target::burgerButton, situation), IsEmpty());
    situation.overlayOpen = false;
    situation.targetShowing = false;
    EXPECT_THAT (actionsFor (Target::burgerButton, situation), IsEmpty());
}

TEST (HoverRulesTest, eachGainButtonOpensItsPanelAndClosesTheOther)
{
    EXPECT_THAT (actionsFor (Target::outputGainButton, {}),
                 ElementsAre (Action::closeOverlays,
                              Action::clearToggles,
                              Action::hideBurgerMenu,
                              Action::hideGainScalePanel,
                              Action::showOutputGainPanel));
    EXPECT_THAT (actionsFor (Target::gainScaleButton, {}),
                 ElementsAre (Action::closeOverlays,
                              Action::clearToggles,
                              Action::hideBurgerMenu,
                              Action::hideOutputGainPanel,
                              Action::showGainScalePanel));

    Situation hidden;
    hidden.targetShowing = false;
    EXPECT_THAT (actionsFor (Target::outputGainButton, hidden), IsEmpty());
    EXPECT_THAT (actionsFor (Target::gainScaleButton, hidden), IsEmpty());
}

TEST (HoverRulesTest, aMessageIsRepaintedFirstOfAll)
{
    Situation situation;
    situation.messageShowing = true;
    EXPECT_THAT (actionsFor (Target::other, situation), ElementsAre (Action::repaintAll));
    EXPECT_EQ (actionsFor (Target::room, situation).front(), Action::repaintAll);
    EXPECT_THAT (actionsFor (Target::other, {}), IsEmpty());
}
