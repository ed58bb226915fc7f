#include "gui/band/BandRig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace
{
juce::String openText (BandRig& rig)
{
    auto* const editor = rig.control->panel().readout.getCurrentTextEditor();
    return editor != nullptr ? editor->getText() : "closed";
}
} // namespace

TEST (SolvaneControlTypingTest, aGainIsTypedIntoTheReadout)
{
    BandRig rig;
    rig.place (3910, 3.0f);
    rig.control->panel().openEditor();
    EXPECT_EQ (openText (rig), "+3.0dB");
    rig.type ("+5.5dB");
    EXPECT_THAT (rig.log, ElementsAre ("begin 1", "gain 5.5", "end 1"));
    EXPECT_EQ (rig.text(), "+5.5dB");
    EXPECT_EQ (openText (rig), "closed");
}

TEST (SolvaneControlTypingTest, aDoubleClickOnTheLineOpensHertz)
{
    BandRig rig;
    rig.place (3910, 3.0f);
    rig.doubleClick (rig.onLine());
    EXPECT_EQ (openText (rig), "3910Hz");
    rig.type ("2,5k");
    EXPECT_THAT (rig.log, ElementsAre ("begin 0", "frequency 2500.0", "end 0"));
}

TEST (SolvaneControlTypingTest, aTypedFrequencyLosesItsFraction)
{
    BandRig rig;
    rig.place (3910, 3.0f);
    rig.doubleClick (rig.onLine());
    rig.type ("1000.9");
    EXPECT_FLOAT_EQ (rig.lastRow, 1000.0f);
}

TEST (SolvaneControlTypingTest, aDoubleClickOnAnEdgeOpensTheQ)
{
    BandRig rig;
    rig.place (3910, 3.0f);
    rig.doubleClick (rig.onTopEdge());
    EXPECT_EQ (openText (rig), "1.0Q");
    rig.type ("6");
    EXPECT_THAT (rig.log, ElementsAre ("begin 2", "q 5.0", "end 2"));

    rig.mode = FilterMode::master;
    rig.doubleClick (rig.onTopEdge());
    rig.type ("6");
    EXPECT_EQ (rig.log[rig.log.size() - 2], "q 1.5");
}

TEST (SolvaneControlTypingTest, aClickAfterTheMouseCameFromTheLineTypesHertz)
{
    BandRig rig;
    rig.place (3910, 3.0f);
    rig.hover (rig.onLine());
    rig.control->panel().openEditor();
    EXPECT_EQ (openText (rig), "3910Hz");
}

TEST (SolvaneControlTypingTest, aGainBeyondTheScaleOpensItFirst)
{
    BandRig rig;
    rig.room.scaleDb = 4.0f;
    rig.place (3910, 3.0f);
    rig.control->panel().openEditor();
    rig.type ("8");
    EXPECT_THAT (rig.log, ElementsAre ("typed 8.0", "collapse -1", "begin 1", "gain 8.0", "end 1"));
}

TEST (SolvaneControlTypingTest, masterLimitsATypedGain)
{
    BandRig rig;
    rig.place (3910, 3.0f);
    rig.mode = FilterMode::master;
    rig.control->panel().openEditor();
    rig.type ("-9");
    EXPECT_EQ (rig.log[1], "gain -4.0");
}

TEST (SolvaneControlTypingTest, whatIsNoNumberIsZero)
{
    BandRig rig;
    rig.place (3910, 3.0f);
    rig.control->panel().openEditor();
    rig.type ("louder");
    EXPECT_EQ (rig.log[1], "gain 0.0");
}

TEST (SolvaneControlTypingTest, aScaleOnItsWayDoesNotBendWhatIsTyped)
{
    BandRig rig;
    rig.place (3910, 3.0f);
    rig.animating = true;
    rig.control->panel().openEditor();
    rig.type ("2.5");
    EXPECT_EQ (rig.log.front(), "typed 2.5");
}

TEST (SolvaneControlTypingTest, aTextThatIsBeingTypedIsNotReplaced)
{
    BandRig rig;
    rig.place (3910, 3.0f);
    rig.control->panel().openEditor();
    rig.control->setGain (-7.0f);
    EXPECT_EQ (openText (rig), "+3.0dB");
}

TEST (SolvaneControlTypingTest, aSoloedBandTakesNoText)
{
    BandRig rig;
    rig.place (3910, 3.0f);
    rig.control->setSolo (true);
    rig.doubleClick (rig.onLine());
    EXPECT_EQ (openText (rig), "closed");
    EXPECT_FALSE (rig.control->panel().readout.isEditableOnSingleClick());
    rig.control->setSolo (false);
    EXPECT_TRUE (rig.control->panel().readout.isEditableOnSingleClick());
}

//======================================================================================================================
TEST (SolvaneControlKeysTest, arrowsMoveGainAndFrequency)
{
    BandRig rig;
    rig.place (1000, 0.0f);
    const auto press = [&] (int code, int modifiers = 0)
    {
        rig.log.clear();
        EXPECT_TRUE (rig.control->keyPressed (juce::KeyPress (code, juce::ModifierKeys (modifiers), 0)));
        return rig.log.size() > 1 ? rig.log[1] : std::string ("nothing");
    };

    using Key = juce::KeyPress;
    constexpr auto shift = juce::ModifierKeys::shiftModifier;
    constexpr auto ctrl = juce::ModifierKeys::ctrlModifier;
    EXPECT_EQ (press (Key::rightKey), "gain 0.5");
    EXPECT_EQ (press (Key::leftKey, shift), "gain 0.4");
    EXPECT_EQ (press (Key::upKey), "frequency 1060.0");
    EXPECT_EQ (press (Key::downKey), "frequency 1000.0");
    EXPECT_EQ (press (Key::downKey, shift), "frequency 990.0");
    EXPECT_EQ (press (Key::upKey, ctrl), "q 1.5");
    EXPECT_EQ (press (Key::leftKey, ctrl | shift), "q 1.4");
}

TEST (SolvaneControlKeysTest, everyKeyStepIsAGesture)
{
    BandRig rig;
    rig.place (1000, 0.0f);
    rig.control->keyPressed (juce::KeyPress (juce::KeyPress::rightKey));
    EXPECT_THAT (rig.log, ElementsAre ("begin 1", "gain 0.5", "end 1"));
}

TEST (SolvaneControlKeysTest, altMovesTheBandBetweenMidAndSide)
{
    BandRig rig;
    rig.makeMidSidePanel();
    rig.place (1000, 0.0f);
    const juce::ModifierKeys alt (juce::ModifierKeys::altModifier);
    rig.control->keyPressed (juce::KeyPress (juce::KeyPress::leftKey, alt, 0));
    EXPECT_FLOAT_EQ (rig.control->bandState().midSide, 0.4f);
    EXPECT_EQ (rig.text(), "100% MID 80% SIDE");
}

TEST (SolvaneControlKeysTest, enterTypesDeleteRemovesEscapeLeaves)
{
    BandRig rig;
    rig.place (1000, 2.0f);
    EXPECT_TRUE (rig.control->keyPressed (juce::KeyPress (juce::KeyPress::returnKey)));
    EXPECT_EQ (openText (rig), "+2.0dB");
    rig.control->panel().closeEditor();

    rig.control->keyPressed (
        juce::KeyPress (juce::KeyPress::returnKey, juce::ModifierKeys (juce::ModifierKeys::shiftModifier), 0));
    EXPECT_EQ (openText (rig), "1000Hz");
    rig.control->panel().closeEditor();

    rig.control->keyPressed (juce::KeyPress (juce::KeyPress::escapeKey));
    EXPECT_EQ (rig.leftCount, 1);
    rig.control->keyPressed (juce::KeyPress (juce::KeyPress::deleteKey));
    EXPECT_EQ (rig.log.back(), "close");
}

TEST (SolvaneControlKeysTest, altWithALetterPressesAButton)
{
    BandRig rig;
    rig.place (2000, 2.0f);
    const auto press = [&] (int code)
    { rig.control->keyPressed (juce::KeyPress (code, juce::ModifierKeys (juce::ModifierKeys::altModifier), 0)); };

    press ('s');
    press ('B');
    press ('h');
    EXPECT_THAT (rig.log, ElementsAre ("solo on", "bypass on", "shelf on"));
}

TEST (SolvaneControlKeysTest, otherKeysStayTheHosts)
{
    BandRig rig;
    rig.place (2000, 2.0f);

    for (const auto code : { static_cast<int> (' '),
                             static_cast<int> ('s'),
                             static_cast<int> ('1'),
                             juce::KeyPress::tabKey,
                             juce::KeyPress::homeKey,
                             juce::KeyPress::F1Key })
        EXPECT_FALSE (rig.control->keyPressed (juce::KeyPress (code))) << code;

    EXPECT_FALSE (
        rig.control->keyPressed (juce::KeyPress ('s', juce::ModifierKeys (juce::ModifierKeys::ctrlModifier), 0)));
    EXPECT_TRUE (rig.log.empty());
}

TEST (SolvaneControlKeysTest, theTabulatorStopsAtTheBandAndAtNothingInIt)
{
    BandRig rig;
    rig.makeMidSidePanel();
    rig.place (3910, 2.0f);
    rig.control->setSelected (true);
    auto& panel = rig.control->panel();

    for (auto* part : std::initializer_list<juce::Component*> { &panel,
                                                                &panel.readout,
                                                                &panel.bypassButton,
                                                                &panel.soloButton,
                                                                &panel.filterTypeButton,
                                                                &rig.midSide->slider,
                                                                &rig.midSide->midButton,
                                                                &rig.midSide->sideButton })
    {
        EXPECT_FALSE (part->getWantsKeyboardFocus()) << part->getName();
        EXPECT_FALSE (part->getTitle().isEmpty()) << part->getName();
    }
}

TEST (SolvaneControlKeysTest, aBandSaysWhatItIs)
{
    BandRig rig (2);
    rig.place (3910, -2.5f, 1.2f);
    EXPECT_EQ (rig.control->getTitle(), "Band 3");
    EXPECT_EQ (rig.control->getDescription(), "3910Hz, -2.5dB, 1.2Q");
    EXPECT_TRUE (rig.control->getWantsKeyboardFocus());
}
