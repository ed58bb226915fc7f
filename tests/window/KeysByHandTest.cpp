#include "window/HandTest.h"

#include <string>

namespace
{
class KeysByHandTest : public HandTest
{
protected:
    /** Works in the room, so that the keys are the window's, and leaves with the pointer. */
    void takeTheKeyboard()
    {
        click (10, 520);
        window.moveAway();
        idleFor (100);
    }

    void key (const std::string& name, const std::string& modifier = {})
    {
        if (! modifier.empty())
            window.keyDown (modifier);

        window.key (name);

        if (! modifier.empty())
            window.keyUp (modifier);
    }
};

TEST_F (KeysByHandTest, tabulatorWalksTheBandsFromLowToHigh)
{
    hangAndSee (1, { 5000.0 });
    hangAndSee (2, { 1000.0 });
    hangAndSee (3, { 2500.0 });
    takeTheKeyboard();

    for (const auto* name : { "Band 2 Gain", "Band 3 Gain", "Band 1 Gain" })
    {
        key ("Tab");
        key ("Right");
        EXPECT_TRUE (comesTo (name, 0.5)) << name << ": " << window.text (name);
    }

    key ("Tab", "Shift_L");
    key ("Right");
    EXPECT_TRUE (comesTo ("Band 3 Gain", 1.0)) << "and back";
}

TEST_F (KeysByHandTest, arrowsStepGainFrequencyQAndPlace)
{
    struct Step
    {
        const char* name;
        const char* modifier;
        const char* parameter;
        double figure;
    };

    hangAndSee (1, { 3910.0 });
    takeTheKeyboard();
    key ("Tab");

    // A semitone from 3910 Hz is 4142.5, and the parameter has steps of 10.
    for (const auto& step : { Step { "Right", "", "Band 1 Gain", 0.5 },
                              Step { "Left", "", "Band 1 Gain", 0.0 },
                              Step { "Left", "Shift_L", "Band 1 Gain", -0.1 },
                              Step { "Right", "Shift_L", "Band 1 Gain", 0.0 },
                              Step { "Up", "", "Band 1 Frequency", 4140.0 },
                              Step { "Up", "Shift_L", "Band 1 Frequency", 4150.0 },
                              Step { "Down", "Shift_L", "Band 1 Frequency", 4140.0 },
                              Step { "Down", "", "Band 1 Frequency", 3910.0 },
                              Step { "Up", "Control_L", "Band 1 Q", 1.5 },
                              Step { "Right", "Control_L", "Band 1 Q", 2.0 },
                              Step { "Down", "Control_L", "Band 1 Q", 1.5 } })
    {
        key (step.name, step.modifier);
        EXPECT_TRUE (comesTo (step.parameter, step.figure))
            << step.modifier << " " << step.name << ": " << window.text (step.parameter);
    }

    window.keyDown ("Control_L");
    key ("Up", "Shift_L");
    window.keyUp ("Control_L");
    EXPECT_TRUE (comesTo ("Band 1 Q", 1.6)) << window.text ("Band 1 Q");

    key ("Right", "Alt_L");
    EXPECT_TRUE (window.eventually ([this] { return window.normalised ("Band 1 Mid/Side") > 0.55f; }));
    EXPECT_NEAR (window.normalised ("Band 1 Mid/Side"), 0.6f, 0.001f);
}

TEST_F (KeysByHandTest, eachStepIsOneGesture)
{
    hangAndSee (1, { 3910.0 });
    takeTheKeyboard();
    key ("Tab");
    idleFor (100);
    window.host().takeEdits();
    key ("Right");
    key ("Right");
    ASSERT_TRUE (comesTo ("Band 1 Gain", 1.0));
    const auto heard = told ("Band 1 Gain");
    EXPECT_EQ (heard.begins, 2);
    EXPECT_EQ (heard.ends, 2);
    EXPECT_THAT (heard.changes, testing::ElementsAre (0.5, 1.0));
}

TEST_F (KeysByHandTest, enterTypes)
{
    struct Typed
    {
        const char* modifier;
        const char* text;
        const char* parameter;
        double figure;
    };

    hangAndSee (1, { 3910.0 });
    takeTheKeyboard();
    key ("Tab");

    for (const auto& typed : { Typed { "", "-4.5", "Band 1 Gain", -4.5 },
                               Typed { "Shift_L", "1.2k", "Band 1 Frequency", 1200.0 },
                               Typed { "Control_L", "3", "Band 1 Q", 3.0 } })
    {
        key ("Return", typed.modifier);
        window.type (typed.text);
        key ("Return");
        EXPECT_TRUE (comesTo (typed.parameter, typed.figure)) << window.text (typed.parameter);
        idleFor (100);
    }

    key ("Right");
    EXPECT_TRUE (comesTo ("Band 1 Gain", -4.0)) << "the band has the keyboard again";
}

TEST_F (KeysByHandTest, lettersWithAltSwitch)
{
    hangAndSee (1, { 3910.0 });
    takeTheKeyboard();
    key ("Tab");

    for (const auto& [letter, parameter] :
         { std::pair ("s", "Band 1 Solo"), std::pair ("b", "Band 1 Bypass"), std::pair ("h", "Band 1 High Shelf") })
    {
        key (letter, "Alt_L");
        EXPECT_TRUE (window.eventually ([&] { return window.isOn (parameter); }, std::chrono::seconds (5)))
            << parameter;
        key (letter, "Alt_L");
        EXPECT_TRUE (window.eventually ([&] { return ! window.isOn (parameter); }, std::chrono::seconds (5)))
            << parameter;
    }
}

TEST_F (KeysByHandTest, deleteRemovesAndEscapeLeaves)
{
    hangAndSee (1, { 1000.0 });
    hangAndSee (2, { 5000.0 });
    takeTheKeyboard();
    key ("Tab");
    key ("Delete");
    EXPECT_TRUE (window.eventually ([this] { return ! window.isOn ("Band 1 Active"); }));
    EXPECT_TRUE (window.isOn ("Band 2 Active"));

    key ("Tab");
    key ("Right");
    ASSERT_TRUE (comesTo ("Band 2 Gain", 0.5));
    key ("Escape");
    key ("Right");
    key ("Delete");
    idleFor (150);
    EXPECT_EQ (window.figure ("Band 2 Gain"), 0.5);
    EXPECT_TRUE (window.isOn ("Band 2 Active"));
}

TEST_F (KeysByHandTest, masterLimitsTheKeys)
{
    window.setNormalised ("Mix/Master Mode", 0.0f);
    hangAndSee (1, { 3910.0, 3.8, 1.4 });
    takeTheKeyboard();
    key ("Tab");
    key ("Right");
    EXPECT_TRUE (comesTo ("Band 1 Gain", 4.0)) << window.text ("Band 1 Gain");
    key ("Up", "Control_L");
    EXPECT_TRUE (comesTo ("Band 1 Q", 1.5)) << window.text ("Band 1 Q");
}
} // namespace
