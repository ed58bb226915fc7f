#include "targets/RateCorrection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
using testing::Each;
using testing::ElementsAre;
} // namespace

TEST (RateCorrectionTest, equalRatesNeedNone)
{
    for (const auto rate : { 44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0 })
        EXPECT_THAT (rateCorrectionDb (rate, rate), Each (0.0f)) << rate;
}

TEST (RateCorrectionTest, aFileOf96KilohertzIn44100ChangesTheTwoHighestBands)
{
    EXPECT_THAT (rateCorrectionDb (44100.0, 96000.0), ElementsAre (0, 0, 0, 0, 0, 0, 0, 0, 0.55f, 1.24f));
}

TEST (RateCorrectionTest, someRowsAreThoseOfTheTable)
{
    EXPECT_THAT (rateCorrectionDb (44100.0, 48000.0),
                 ElementsAre (-0.1276016f,
                              -0.0475083f,
                              0.0254307f,
                              0.0317612f,
                              0.1771679f,
                              0.2959595f,
                              0.4762917f,
                              1.1628304f,
                              2.404768f,
                              3.550211f));
    EXPECT_THAT (rateCorrectionDb (192000.0, 96000.0),
                 ElementsAre (0.0554161f,
                              -0.0263825f,
                              0.0068932f,
                              0.0275821f,
                              0.0078792f,
                              0.0397358f,
                              0.0920143f,
                              0.2271786f,
                              0.5595837f,
                              0.8437194f));
}

TEST (RateCorrectionTest, everySessionRateButOneHasARowForTheUsualFiles)
{
    for (const auto session : { 44100.0, 48000.0, 88200.0, 96000.0, 192000.0 })
        for (const auto file : { 44100.0, 48000.0, 88200.0, 96000.0, 192000.0 })
        {
            if (session != file)
            {
                EXPECT_NE (rateCorrectionDb (session, file)[8], 0.0f) << session << " from " << file;
            }
        }

    for (const auto file : { 44100.0, 48000.0, 88200.0, 96000.0, 192000.0 })
        EXPECT_THAT (rateCorrectionDb (176400.0, file), Each (0.0f));
}

TEST (RateCorrectionTest, theOddRatesOfTheTableStay)
{
    for (const auto session : { 44100.0, 48000.0, 96000.0, 192000.0 })
        EXPECT_EQ (rateCorrectionDb (session, 88000.0), rateCorrectionDb (session, 88200.0));

    for (const auto session : { 44100.0, 48000.0, 88200.0, 96000.0 })
    {
        EXPECT_EQ (rateCorrectionDb (session, 176000.0), rateCorrectionDb (session, 192000.0));
        EXPECT_THAT (rateCorrectionDb (session, 176400.0), Each (0.0f));
    }
}
