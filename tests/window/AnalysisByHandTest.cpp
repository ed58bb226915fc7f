#include "window/FileDrop.h"
#include "window/HandTest.h"
#include "window/MixFile.h"

#include <cstdint>

// The analysis window, in a window of 680 by 712: 680 wide, it begins 425 pixels above the editor's end, within the
// room.

namespace
{
constexpr int left = 5;
constexpr int top = 42 + 712 - 425;
constexpr int analyseIconX = 2 + 13;
constexpr int analyseIconY = 712 - 40 + 13;
constexpr int middle = left + 340;
constexpr int waveX = left + 33;
constexpr int waveWidth = 620;
constexpr int waveMiddleY = top + 50 + 60;
constexpr int transportY = top + 50 + 139 - 12;
constexpr int symbolX = left + 25 + 8 + 5;
constexpr int rowY = top + 198 + 12;
constexpr int deleteX = left + 680 - 46 + 12;
constexpr int analyseY = top + 230 + 10;
constexpr int closeY = top + 295 + 12;

constexpr std::uint32_t ground = 0x0f0f0f;
constexpr std::uint32_t blue = 0x009eff;
constexpr std::uint32_t green = 0x14d222;
constexpr std::uint32_t symbol = 0xc8c8c8;
constexpr std::uint32_t selectedRow = 0x232323;
constexpr std::uint32_t typing = 0x00537f;

class AnalysisByHandTest : public HandTest
{
protected:
    explicit AnalysisByHandTest (bool managed = false) : HandTest (managed) {}

    [[nodiscard]] bool isOpen() { return showsColour (left + 10, top + 10, ground); }

    void openAnalysis()
    {
        window.click (analyseIconX, analyseIconY);
        ASSERT_TRUE (window.eventually ([this] { return isOpen() && showsColour (left + 10, top + 320, ground); }));
        idleFor (300);
    }

    /** The waveform's middle line is blue once a track is there. */
    [[nodiscard]] bool showsTrack() { return countIn (waveX, waveMiddleY, waveWidth, 2, blue) > 200; }

    void dropFile (const MixFile& file)
    {
        FileDrop::drop (window, middle, waveMiddleY, { file.path.string() });
        ASSERT_TRUE (window.eventually ([this] { return showsTrack(); }));
        idleFor (100);
    }

    [[nodiscard]] int countIn (int x, int y, int width, int height, std::uint32_t colour)
    {
        const auto picture = window.look();
        auto count = 0;

        for (auto row = y; row < y + height; ++row)
            for (auto column = x; column < x + width; ++column)
                count += picture.at (column, row) == colour ? 1 : 0;

        return count;
    }

    /** What the plug-in would have the host keep, as text. */
    [[nodiscard]] std::string session()
    {
        const auto bytes = window.host().chunk();
        return { bytes.begin(), bytes.end() };
    }

    [[nodiscard]] bool keeps (const std::string& text) { return session().find (text) != std::string::npos; }
};
} // namespace

TEST_F (AnalysisByHandTest, opensByItsButtonAndClosesByItsOwn)
{
    openAnalysis();
    window.click (middle, closeY);
    EXPECT_TRUE (window.eventually ([this] { return ! isOpen(); }));
    openAnalysis();
    window.click (analyseIconX, analyseIconY);
    EXPECT_TRUE (window.eventually ([this] { return ! isOpen(); }));
}

TEST_F (AnalysisByHandTest, aDroppedFileBecomesATrack)
{
    const MixFile file ("a tone.wav", 4.0);
    openAnalysis();
    EXPECT_FALSE (showsTrack());
    dropFile (file);
    EXPECT_TRUE (showsColour (left + 40, rowY, selectedRow));
    EXPECT_TRUE (keeps ("a tone.wav"));

    // And it goes again.
    window.click (deleteX, rowY);
    EXPECT_TRUE (window.eventually ([this] { return ! showsTrack(); }));
    EXPECT_FALSE (keeps ("a tone.wav"));
}

TEST_F (AnalysisByHandTest, aDragMarksARangeAndAltTakesItAway)
{
    const MixFile file ("tone.wav", 4.0);
    openAnalysis();
    dropFile (file);
    window.drag (waveX + 155, waveMiddleY + 20, waveX + 310, waveMiddleY + 20);
    EXPECT_TRUE (window.eventually ([&] { return countIn (waveX + 155, waveMiddleY, 155, 2, green) > 60; }));

    // A quarter to the middle of 192000 samples.
    EXPECT_TRUE (keeps ("<loop start-samples=\"48000\" end-samples=\"96000\"")) << session();

    window.keyDown ("Alt_L");
    window.click (waveX + 200, waveMiddleY + 20);
    window.keyUp ("Alt_L");
    EXPECT_TRUE (window.eventually ([&] { return countIn (waveX, waveMiddleY, waveWidth, 2, green) == 0; }));
    EXPECT_FALSE (keeps ("<loop"));
}

TEST_F (AnalysisByHandTest, theTransportPlaysAndPauses)
{
    const MixFile file ("tone.wav", 20.0);
    openAnalysis();
    dropFile (file);

    // The triangle's lower corner; between the bars of the other symbol there is nothing.
    const auto showsPause = [this]
    { return showsColour (symbolX - 4, transportY - 4, symbol) && ! showsColour (symbolX, transportY, symbol); };
    EXPECT_FALSE (showsPause());
    window.click (symbolX, transportY);
    EXPECT_TRUE (window.eventually (showsPause));

    // The line is on its way through the waveform.
    const auto lineAt = [this]
    {
        const auto picture = window.look();

        // Through the strip's middle and the waveform's upper edge.
        for (auto x = waveX + 20; x < waveX + waveWidth; ++x)
            if (picture.at (x, transportY) == symbol && picture.at (x, top + 51) == symbol)
                return x - waveX;

        return -1;
    };
    EXPECT_TRUE (window.eventually ([&] { return lineAt() > 20; }));

    // A long way on it plays on, beside the line it pauses.
    window.click (waveX + 465, transportY);
    EXPECT_TRUE (window.eventually ([&] { return lineAt() >= 464; }));
    EXPECT_TRUE (showsPause());
    window.click (waveX + lineAt() + 4, transportY);
    EXPECT_TRUE (window.eventually ([&] { return ! showsPause(); }));
}

TEST_F (AnalysisByHandTest, aDoubleClickRenamesATrack)
{
    const MixFile file ("tone.wav", 2.0);
    openAnalysis();
    dropFile (file);
    const auto titleWidth = [this]
    {
        const auto picture = window.look();

        for (auto x = left + 300; x > left + 28; --x)
            for (auto y = top + 30; y < top + 48; ++y)
                if (picture.at (x, y) == 0xffffff)
                    return x - left - 28;

        return 0;
    };
    const auto before = titleWidth();
    window.doubleClick (middle, rowY);
    ASSERT_TRUE (window.eventually ([this] { return showsColour (left + 40, rowY, typing); }));
    window.type ("A MUCH LONGER NAME");
    window.key ("Return");
    EXPECT_TRUE (window.eventually ([&] { return titleWidth() > before + 60; })) << before << " " << titleWidth();
    EXPECT_TRUE (showsColour (left + 40, rowY, selectedRow));
}

TEST_F (AnalysisByHandTest, analysingEndsWithATargetAndAClosedWindow)
{
    const MixFile file ("tone.wav", 10.0);
    openAnalysis();
    dropFile (file);
    EXPECT_FALSE (keeps ("target-set-user=\"1\""));
    window.click (middle, analyseY);
    EXPECT_TRUE (window.eventually ([this] { return ! isOpen(); }));
    EXPECT_TRUE (keeps ("target-set-user=\"1\"")) << session();
}

TEST_F (AnalysisByHandTest, aWindowThatIsClosedInMidRunLosesNothing)
{
    const MixFile file ("tone.wav", 60.0);
    openAnalysis();
    dropFile (file);
    window.click (middle, analyseY);
    window.close();
    EXPECT_TRUE (keeps ("target-set-user=\"1\""));
    window.open();
    openAnalysis();
    EXPECT_TRUE (window.eventually ([this] { return showsTrack(); }));
}

namespace
{
/** Where a click makes a window the active one, as on most desktops. */
class ManagedAnalysisByHandTest : public AnalysisByHandTest
{
protected:
    ManagedAnalysisByHandTest() : AnalysisByHandTest (true) {}
};
} // namespace

TEST_F (ManagedAnalysisByHandTest, aDoubleClickThatActivatesTheWindowRenamesAsWell)
{
    const MixFile file ("tone.wav", 2.0);
    openAnalysis();
    dropFile (file);
    window.doubleClick (middle, rowY);
    ASSERT_TRUE (window.eventually ([this] { return showsColour (left + 40, rowY, typing); }));
    idleFor (300);
    window.type ("B");
    window.key ("Return");
    EXPECT_TRUE (window.eventually ([this] { return showsColour (left + 40, rowY, selectedRow); }));
}
