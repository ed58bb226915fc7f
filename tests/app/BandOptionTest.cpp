#include "app/BandOption.h"

#include "app/CommandError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
std::string refusalOf (const std::string& text)
{
    try
    {
        std::ignore = BandOption::parse (text);
    }
    catch (const CommandError& error)
    {
        EXPECT_EQ (error.code(), ExitCode::badArguments);
        return error.what();
    }

    return "taken";
}

TEST (BandOptionTest, readsFrequencyGainAndQ)
{
    const auto band = BandOption::parse ("2500,-3.5,1.4");
    EXPECT_EQ (band.frequencyHz, 2500.0f);
    EXPECT_EQ (band.gainDb, -3.5f);
    EXPECT_EQ (band.q, 1.4f);
    EXPECT_FALSE (band.highShelf);
    EXPECT_FALSE (band.solo);
    EXPECT_FALSE (band.bypass);
    EXPECT_EQ (band.midSide, 0.5f);
}

TEST (BandOptionTest, readsTheWordsInAnyOrder)
{
    const auto band = BandOption::parse ("10000,+4,1,bypass,ms=0.25,solo,shelf");
    EXPECT_EQ (band.gainDb, 4.0f);
    EXPECT_TRUE (band.highShelf);
    EXPECT_TRUE (band.solo);
    EXPECT_TRUE (band.bypass);
    EXPECT_EQ (band.midSide, 0.25f);
}

TEST (BandOptionTest, passesOverBlanks)
{
    const auto band = BandOption::parse (" 2000, 2 ,0.7 , shelf ");
    EXPECT_EQ (band.frequencyHz, 2000.0f);
    EXPECT_EQ (band.gainDb, 2.0f);
    EXPECT_EQ (band.q, 0.7f);
    EXPECT_TRUE (band.highShelf);
}

TEST (BandOptionTest, readsFrequenciesInThousands)
{
    EXPECT_EQ (BandOption::parse ("2.5k,1,1").frequencyHz, 2500.0f);
    EXPECT_EQ (BandOption::parse ("16K,1,1").frequencyHz, 16000.0f);
}

TEST (BandOptionTest, takesShelvesAboveTheLowGroupOnly)
{
    EXPECT_THAT (refusalOf ("1590,3,1,shelf"), testing::HasSubstr ("a high shelf starts at 1600 Hz"));
    EXPECT_TRUE (BandOption::parse ("1600,3,1,shelf").highShelf);
    EXPECT_FALSE (BandOption::parse ("1590,3,1").highShelf);
}

TEST (BandOptionTest, takesTheEndsOfEveryRange)
{
    EXPECT_EQ (BandOption::parse ("320,-12,0.5,ms=0").midSide, 0.0f);
    EXPECT_EQ (BandOption::parse ("20000,12,5,ms=1").midSide, 1.0f);
}

TEST (BandOptionTest, saysWhatIsWrongAndWhatABandIs)
{
    using testing::AllOf;
    using testing::HasSubstr;
    const auto example = HasSubstr ("for example 2500,-3,1.4");

    EXPECT_THAT (refusalOf (""), AllOf (HasSubstr ("needed"), example));
    EXPECT_THAT (refusalOf ("1000,3"), AllOf (HasSubstr ("frequency, gain and Q are needed"), example));
    EXPECT_THAT (refusalOf ("1kk,3,1"), AllOf (HasSubstr ("the frequency '1k' is not a number"), example));
    EXPECT_THAT (refusalOf ("1000,,1"), HasSubstr ("the gain '' is not a number"));
    EXPECT_THAT (refusalOf ("1000,3,nan"), HasSubstr ("the Q 'nan' is not a number"));
    EXPECT_THAT (refusalOf ("1000,inf,1"), HasSubstr ("the gain 'inf' is not a number"));
    EXPECT_THAT (refusalOf ("319,3,1"), HasSubstr ("the frequency 319 is outside 320 to 20000 Hz"));
    EXPECT_THAT (refusalOf ("20001,3,1"), HasSubstr ("outside 320 to 20000 Hz"));
    EXPECT_THAT (refusalOf ("1000,12.1,1"), HasSubstr ("the gain 12.1 is outside -12 to 12 dB"));
    EXPECT_THAT (refusalOf ("1000,3,5.1"), HasSubstr ("the Q 5.1 is outside 0.5 to 5."));
    EXPECT_THAT (refusalOf ("1000,3,1,ms=1.5"), HasSubstr ("the mid/side value 1.5 is outside 0 to 1."));
    EXPECT_THAT (refusalOf ("1000,3,1,ms="), HasSubstr ("the mid/side value '' is not a number"));
    EXPECT_THAT (refusalOf ("1000,3,1,notch"), HasSubstr ("'notch' is not known"));
    EXPECT_THAT (refusalOf ("1000,3,1,"), HasSubstr ("something is missing after a comma"));
}
} // namespace
