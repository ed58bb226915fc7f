#include "gui/heat/HeatStrips.h"

#include "support/Messages.h"
#include "support/RealTimeGuard.h"

#include <gtest/gtest.h>

#include <optional>

namespace
{
constexpr int height = 622;

/** The line of a height of 622 pixels that 1 kHz stands on, at 48 kHz in the bins 21 and 22. */
constexpr int lineOf1kHz = 450;

class HeatStripsTest : public testing::Test
{
protected:
    HeatStripsTest()
    {
        model.sampleRate = 48000.0;
        model.setShowHeatmap (true);
        strips.emplace (spectrum, model, [this] { ++drawings; });
        strips->resize (height);
        std::ignore = strips->frame();
    }

    void hear (float magnitude)
    {
        LiveSpectrum::Magnitudes magnitudes {};
        magnitudes[21] = magnitude;
        spectrum.publish (magnitudes);
    }

    int alphaAt (int line)
    {
        juce::Image image (juce::Image::ARGB, 100, height, true, juce::SoftwareImageType());
        juce::Graphics graphics (image);
        strips->paint (graphics, image.getBounds());
        return image.getPixelAt (5, line).getAlpha();
    }

    LiveSpectrum spectrum;
    PluginModel model;
    int drawings = 0;
    std::optional<HeatStrips> strips;
};
} // namespace

TEST_F (HeatStripsTest, aFrameIsNeededForNewSoundThatIsWantedAndSeen)
{
    HeatStrips::Situation situation;
    EXPECT_FALSE (HeatStrips::needsFrame (situation)) << "an idle window";
    situation.heatMapWanted = situation.windowShowing = situation.spectrumFresh = true;
    EXPECT_TRUE (HeatStrips::needsFrame (situation));

    for (auto part : { &HeatStrips::Situation::heatMapWanted,
                       &HeatStrips::Situation::windowShowing,
                       &HeatStrips::Situation::spectrumFresh })
    {
        auto lacking = situation;
        lacking.*part = false;
        EXPECT_FALSE (HeatStrips::needsFrame (lacking));
    }
}

TEST_F (HeatStripsTest, aFrameIsNeededUntilTheStripsAreBlackAndWhereRepaintingIsForced)
{
    HeatStrips::Situation situation;
    situation.black = false;
    EXPECT_TRUE (HeatStrips::needsFrame (situation));
    situation.black = true;
    situation.repaintForced = true;
    EXPECT_TRUE (HeatStrips::needsFrame (situation));
}

TEST_F (HeatStripsTest, whatIsHeardGlowsAtItsHeight)
{
    EXPECT_TRUE (strips->isBlack());
    hear (0.5f);
    EXPECT_TRUE (strips->frame());
    EXPECT_FALSE (strips->isBlack());
    EXPECT_EQ (alphaAt (lineOf1kHz), 128);
    EXPECT_EQ (alphaAt (lineOf1kHz - 60), 0);
    EXPECT_EQ (alphaAt (lineOf1kHz + 60), 0);
}

TEST_F (HeatStripsTest, withoutAudioTheStripsFadeAndStayBlackAfterTwentyFrames)
{
    hear (512.0f); // a sine of full scale
    std::ignore = strips->frame();
    EXPECT_EQ (alphaAt (lineOf1kHz), 255);

    for (const auto alpha : { 179, 125, 87 })
    {
        EXPECT_TRUE (strips->frame());
        EXPECT_EQ (alphaAt (lineOf1kHz), alpha);
    }

    for (int frame = 4; frame <= 20; ++frame)
        std::ignore = strips->frame();

    EXPECT_TRUE (strips->isBlack());

    for (int line = 0; line < height; ++line)
        EXPECT_EQ (alphaAt (line), 0) << line;

    for (int frame = 0; frame < 100; ++frame)
        EXPECT_FALSE (strips->frame());
}

TEST_F (HeatStripsTest, aSpectrumIsReadOnce)
{
    hear (1.0f);
    std::ignore = strips->frame();
    EXPECT_FALSE (spectrum.hasFresh());
    std::ignore = strips->frame();
    EXPECT_EQ (alphaAt (lineOf1kHz), 179);
}

TEST_F (HeatStripsTest, whatDoesNotChangeIsNotDrawnAnew)
{
    EXPECT_FALSE (strips->frame());

    for (int frame = 0; frame < 10; ++frame)
    {
        hear (1.0f);
        EXPECT_EQ (strips->frame(), frame == 0);
    }
}

TEST_F (HeatStripsTest, soundTooFaintToBeSeenLeavesTheStripsBlack)
{
    for (int frame = 0; frame < 10; ++frame)
    {
        hear (0.0019f);
        EXPECT_FALSE (strips->frame());
        EXPECT_TRUE (strips->isBlack());
    }
}

TEST_F (HeatStripsTest, switchingTheHeatMapOffClearsThem)
{
    hear (1.0f);
    std::ignore = strips->frame();
    model.setShowHeatmap (false);
    hear (1.0f);
    EXPECT_TRUE (strips->frame());
    EXPECT_TRUE (strips->isBlack());
    EXPECT_EQ (alphaAt (lineOf1kHz), 0);
}

TEST_F (HeatStripsTest, aNewSizeIsDrawnThoughNothingElseHasChanged)
{
    hear (1.0f);
    std::ignore = strips->frame();
    hear (1.0f);
    strips->resize (height);
    EXPECT_EQ (alphaAt (lineOf1kHz), 0);
    EXPECT_TRUE (strips->frame());
    EXPECT_EQ (alphaAt (lineOf1kHz), 255);
}

TEST_F (HeatStripsTest, aNewSizeWithoutSoundIsNotDrawn)
{
    strips->resize (height - 100);
    EXPECT_FALSE (strips->frame());
}

TEST_F (HeatStripsTest, aFrameDoesNotAllocate)
{
    hear (0.5f);
    std::ignore = strips->frame();
    hear (1.0f);
    std::ignore = strips->frame();
    hear (0.25f);
    const RealTimeGuard guard;
    EXPECT_TRUE (strips->frame());
    EXPECT_EQ (guard.allocations(), 0);
}

//======================================================================================================================
TEST_F (HeatStripsTest, aTickHasTheThreadDrawAndTellsTheMessageThread)
{
    strips->start();
    hear (0.5f);
    strips->tick (true, false);
    strips->drawNow (true);
    EXPECT_EQ (drawings, 0) << "not on the worker's own thread";
    Messages::deliver();
    EXPECT_EQ (drawings, 1) << "of two frames one word";
    EXPECT_FALSE (strips->isBlack());
}

TEST_F (HeatStripsTest, atRestNothingIsToldWhateverTheWindowTicks)
{
    strips->start();

    for (int tick = 0; tick < 50; ++tick)
        strips->tick (true, tick % 2 == 0);

    strips->drawNow (true);
    Messages::deliver();
    EXPECT_EQ (drawings, 0);
}

TEST_F (HeatStripsTest, aWindowThatIsNotSeenTakesNoSoundAndGoesOut)
{
    strips->start();
    hear (1.0f);
    strips->drawNow (true);
    EXPECT_FALSE (strips->isBlack());

    for (int frame = 0; frame < 20; ++frame)
    {
        hear (1.0f);
        strips->drawNow (false);
    }

    EXPECT_TRUE (strips->isBlack());
    EXPECT_TRUE (spectrum.hasFresh());
}

TEST_F (HeatStripsTest, whatWasHeardBeforeTheStartIsLeftOut)
{
    hear (1.0f);
    strips->start();
    strips->drawNow (true);
    EXPECT_TRUE (strips->isBlack());
}

TEST_F (HeatStripsTest, theyMayGoAtAnyMomentAndTellNothingAfterwards)
{
    for (int round = 0; round < 100; ++round)
    {
        strips.emplace (spectrum, model, [this] { ++drawings; });
        strips->resize (height);
        strips->start();
        hear (0.01f * static_cast<float> (round));
        strips->tick (true, true);

        if (round % 2 == 0)
            strips->drawNow (true);

        strips.reset();
    }

    Messages::deliver();
    EXPECT_EQ (drawings, 0);
}
