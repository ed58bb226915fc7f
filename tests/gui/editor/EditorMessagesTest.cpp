#include "gui/editor/EditorMessages.h"

#include <gtest/gtest.h>

namespace
{
EditorMessages::Situation beyondMaster()
{
    EditorMessages::Situation situation;
    situation.bandChangedByUser = true;
    situation.canUseMasterMode = false;
    return situation;
}
} // namespace

TEST (EditorMessagesTest, areWordedAsTheUserKnowsThem)
{
    EXPECT_EQ (
        EditorMessages::masterLimits(),
        juce::String::fromUTF8 ("Master filters can only be applied where gain is less than \xC2\xB1"
                                "4dB and Q is less than 1.5.\n\nChange Filter Mode to 'Mix' for adjustments above "
                                "\xC2\xB1"
                                "4dB."));
    EXPECT_EQ (EditorMessages::bandsOutOfScale(), "EQ bands not within selected scale.");
}

TEST (EditorMessagesTest, theLimitsOfMasterAreExplainedWhenAHandHasCrossedThem)
{
    EXPECT_TRUE (EditorMessages::showsMasterLimits (beyondMaster()));

    auto situation = beyondMaster();
    situation.bandChangedByUser = false;
    EXPECT_FALSE (EditorMessages::showsMasterLimits (situation));

    situation = beyondMaster();
    situation.canUseMasterMode = true;
    EXPECT_FALSE (EditorMessages::showsMasterLimits (situation));

    situation = beyondMaster();
    situation.masterMode = false;
    EXPECT_FALSE (EditorMessages::showsMasterLimits (situation));

    situation = beyondMaster();
    situation.menuOpen = true;
    EXPECT_FALSE (EditorMessages::showsMasterLimits (situation));

    situation = beyondMaster();
    situation.notificationsWanted = false;
    EXPECT_FALSE (EditorMessages::showsMasterLimits (situation));
}

TEST (EditorMessagesTest, sixTimesAndNotASeventh)
{
    auto situation = beyondMaster();
    situation.masterMessageCount = 5;
    EXPECT_TRUE (EditorMessages::showsMasterLimits (situation));
    situation.masterMessageCount = 6;
    EXPECT_FALSE (EditorMessages::showsMasterLimits (situation));
}

TEST (EditorMessagesTest, bandsOutOfScaleAreMentionedUnlessSomethingIsOpen)
{
    EditorMessages::Situation situation;
    EXPECT_TRUE (EditorMessages::showsBandsOutOfScale (situation));
    situation.menuOpen = true;
    EXPECT_FALSE (EditorMessages::showsBandsOutOfScale (situation));
    situation.menuOpen = false;
    situation.notificationsWanted = false;
    EXPECT_FALSE (EditorMessages::showsBandsOutOfScale (situation));
}

TEST (EditorMessagesTest, smartBandsAreOfferedToAStoppedHostWithNothingOverItsRoom)
{
    const auto offered = [] (auto change)
    {
        EditorMessages::Situation situation;
        situation.smartBandsReady = true;
        change (situation);
        return EditorMessages::offersSmartBands (situation);
    };

    EXPECT_TRUE (offered ([] (auto&) {}));
    EXPECT_FALSE (offered ([] (auto& situation) { situation.smartBandsReady = false; }));
    EXPECT_FALSE (offered ([] (auto& situation) { situation.transportPlaying = true; }));
    EXPECT_FALSE (offered ([] (auto& situation) { situation.menuOpen = true; }));
    EXPECT_FALSE (offered ([] (auto& situation) { situation.overlayOpen = true; }));
    EXPECT_FALSE (offered ([] (auto& situation) { situation.notificationsWanted = false; }));
}
