#include "window/HandTest.h"

namespace
{
const HungBand start { 3910.0, 3.0 };

/** Rows of that band's line and body, and inside its lower edge. */
constexpr int line = 253;
constexpr int body = 300;
constexpr int insideBottom = 335;

constexpr int left = 120;
constexpr int readout = 316;

constexpr auto gain = "Band 1 Gain";
constexpr auto frequency = "Band 1 Frequency";
constexpr auto q = "Band 1 Q";

struct Typed
{
    const char* text;
    double figure;
};

class TypeByHandTest : public HandTest
{
protected:
    explicit TypeByHandTest (bool managed = false) : HandTest (managed) {}

    /** Hangs the band anew, so that no case follows from another. */
    void begin()
    {
        hang (window, 1, start);
        ASSERT_TRUE (window.eventually ([this] { return showsLine (1, line); }));

        // What is clicked next is no second click of the last one.
        idleFor (450);
    }

    void openGain()
    {
        moveTo (left, body);
        ASSERT_TRUE (window.eventually ([this] { return showsPanel (line); }));
        click (readout, line);
        idleFor (50);
    }

    void openFrequency()
    {
        doubleClick (left, line);
        idleFor (50);
    }

    void openQ()
    {
        doubleClick (left, insideBottom);
        idleFor (50);
    }

    /** What opens selected is typed over, by nothing as well. */
    void type (const std::string& text)
    {
        if (text.empty())
            window.key ("BackSpace");

        window.type (text);
    }
};

TEST_F (TypeByHandTest, clickOnTheReadoutTypesAGain)
{
    for (const auto& typed : { Typed { "+5.5dB", 5.5 },
                               Typed { "5,5", 5.5 },
                               Typed { "-3", -3.0 },
                               Typed { "100", 12.0 },
                               Typed { "-100", -12.0 },
                               Typed { "loud", 0.0 },
                               Typed { "", 0.0 } })
    {
        begin();
        openGain();
        type (typed.text);
        EXPECT_EQ (window.figure (gain), 3.0) << "not before it is said to be done";
        window.key ("Return");
        EXPECT_TRUE (comesTo (gain, typed.figure)) << "'" << typed.text << "': " << window.text (gain);
    }
}

/** Where a click makes a window the active one, as on most desktops. */
class ManagedTypeByHandTest : public TypeByHandTest
{
protected:
    ManagedTypeByHandTest() : TypeByHandTest (true) {}
};

TEST_F (ManagedTypeByHandTest, clickThatActivatesTheWindowTypesAsWell)
{
    for (const auto* text : { "5.5", "-2", "7" })
    {
        begin();
        openGain();
        type (text);
        window.key ("Return");
        EXPECT_TRUE (comesTo (gain, std::stod (text))) << text << ": " << window.text (gain);
    }

    begin();
    openFrequency();
    type ("1234Hz");
    window.key ("Return");
    EXPECT_TRUE (comesTo (frequency, 1230.0)) << window.text (frequency);
}

TEST_F (TypeByHandTest, doubleClickOnTheLineTypesAFrequency)
{
    for (const auto& typed : { Typed { "2.5k", 2500.0 },
                               Typed { "2,5 kHz", 2500.0 },
                               Typed { "1234Hz", 1230.0 },
                               Typed { "100", 320.0 },
                               Typed { "30000", 20000.0 },
                               Typed { "high", 320.0 } })
    {
        begin();
        openFrequency();
        type (typed.text);
        window.key ("Return");
        EXPECT_TRUE (comesTo (frequency, typed.figure)) << "'" << typed.text << "': " << window.text (frequency);
        EXPECT_EQ (window.figure (gain), 3.0);
    }
}

TEST_F (TypeByHandTest, doubleClickOnAnEdgeTypesAQ)
{
    for (const auto& typed :
         { Typed { "6", 5.0 }, Typed { "0.1", 0.5 }, Typed { "2,5Q", 2.5 }, Typed { "narrow", 0.5 } })
    {
        begin();
        openQ();
        type (typed.text);
        window.key ("Return");
        EXPECT_TRUE (comesTo (q, typed.figure)) << "'" << typed.text << "': " << window.text (q);
        EXPECT_EQ (window.figure (gain), 3.0);
    }
}

TEST_F (TypeByHandTest, masterLimitsWhatIsTyped)
{
    window.setNormalised ("Mix/Master Mode", 0.0f);
    begin();
    openQ();
    type ("6");
    window.key ("Return");
    EXPECT_TRUE (comesTo (q, 1.5)) << window.text (q);

    begin();
    openGain();
    type ("-9");
    window.key ("Return");
    EXPECT_TRUE (comesTo (gain, -4.0)) << window.text (gain);
}

TEST_F (TypeByHandTest, tellsTheHostOfOneGesture)
{
    begin();
    openGain();
    window.host().takeEdits();
    type ("6");
    window.key ("Return");
    ASSERT_TRUE (comesTo (gain, 6.0));
    const auto heard = told (gain);
    EXPECT_EQ (heard.begins, 1);
    EXPECT_EQ (heard.ends, 1);
    EXPECT_THAT (heard.changes, testing::ElementsAre (6.0));
}

TEST_F (TypeByHandTest, escapeAndAnEnterAtOnceKeepWhatThereWas)
{
    for (const auto* key : { "Escape", "Return" })
    {
        begin();
        openGain();

        if (key == std::string ("Escape"))
            type ("9");

        window.key (key);
        idleFor (100);
        EXPECT_EQ (window.figure (gain), 3.0) << key;

        // What is typed now is typed nowhere.
        type ("8");
        window.key ("Return");
        idleFor (100);
        EXPECT_EQ (window.figure (gain), 3.0) << key;
        window.key ("Escape");
    }

    begin();
    openGain();
    type ("9");
    window.key ("Return");
    EXPECT_TRUE (comesTo (gain, 9.0)) << "the same with Enter at its end";
}

TEST_F (TypeByHandTest, pointerMayGoWhileAValueIsTyped)
{
    struct Elsewhere
    {
        const char* what;
        int column;
        int row;
    };

    for (const auto& elsewhere : { Elsewhere { "the empty room", left, 520 },
                                   Elsewhere { "the wall", 10, 500 },
                                   Elsewhere { "the strip beside it", -10, 500 },
                                   Elsewhere { "the bar above", 250, -20 },
                                   Elsewhere { "the bar below", 250, 640 } })
    {
        begin();
        openGain();
        window.type ("7");
        moveTo (elsewhere.column, elsewhere.row);
        idleFor (300);
        window.key ("Return");
        EXPECT_TRUE (comesTo (gain, 7.0)) << elsewhere.what << ": " << window.text (gain);
    }
}

TEST_F (TypeByHandTest, clickElsewhereTakesWhatIsTyped)
{
    struct Elsewhere
    {
        const char* what;
        int column;
        int row;
    };

    for (const auto& elsewhere : { Elsewhere { "the empty room", left, 520 },
                                   Elsewhere { "the wall", 10, 300 },
                                   Elsewhere { "the band itself", left, body },
                                   Elsewhere { "the bar above", 250, -20 } })
    {
        begin();
        openGain();
        type ("6");
        click (elsewhere.column, elsewhere.row);
        EXPECT_TRUE (comesTo (gain, 6.0)) << elsewhere.what << ": " << window.text (gain);
    }
}

TEST_F (TypeByHandTest, windowClosesWhileAValueIsTyped)
{
    begin();
    openGain();
    type ("9");
    window.close();
    EXPECT_EQ (window.figure (gain), 3.0);

    window.open();
    idleFor (200);
    openGain();
    type ("6");
    window.key ("Return");
    EXPECT_TRUE (comesTo (gain, 6.0)) << window.text (gain);
}

TEST_F (TypeByHandTest, bypassedBandTakesNoTyping)
{
    begin();
    moveTo (left, body);
    ASSERT_TRUE (window.eventually ([this] { return showsPanel (line); }));
    window.setNormalised ("Band 1 Bypass", 1.0f);
    idleFor (150);
    click (readout, line);
    idleFor (50);
    type ("6");
    window.key ("Return");
    idleFor (150);
    EXPECT_EQ (window.figure (gain), 3.0);

    window.setNormalised ("Band 1 Bypass", 0.0f);
    begin();
    openGain();
    type ("6");
    window.key ("Return");
    EXPECT_TRUE (comesTo (gain, 6.0)) << window.text (gain);
}
} // namespace
