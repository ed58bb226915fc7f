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

/** Each digit of the table, by two sums of each row that were made elsewhere. */
TEST (RateCorrectionTest, allRowsAddUp)
{
    struct Sum
    {
        double sessionRate, fileRate, plain, weighted;
    };

    for (const auto& expected :
         { Sum { 44100.0, 48000.0, 7.9493105, 72.4240223 },    Sum { 44100.0, 88200.0, 0.5065020, 5.4280903 },
           Sum { 44100.0, 96000.0, 1.7900000, 17.3500000 },    Sum { 44100.0, 176000.0, 1.3545227, 11.8700718 },
           Sum { 48000.0, 44100.0, 10.5464612, 92.5013076 },   Sum { 48000.0, 88200.0, 3.6662484, 31.4993426 },
           Sum { 48000.0, 96000.0, 1.1779596, 7.1810350 },     Sum { 48000.0, 176000.0, 0.9590264, 5.9724391 },
           Sum { 88200.0, 44100.0, 9.9139558, 89.7794636 },    Sum { 88200.0, 48000.0, 10.0417078, 91.5086527 },
           Sum { 88200.0, 96000.0, 2.4118901, 19.9888405 },    Sum { 88200.0, 176000.0, 0.8707696, 6.5718693 },
           Sum { 96000.0, 44100.0, 12.2468703, 112.4708361 },  Sum { 96000.0, 48000.0, 7.9222661, 74.2772449 },
           Sum { 96000.0, 88200.0, 2.3890382, 23.4870566 },    Sum { 96000.0, 176000.0, 0.0414811, 0.8081172 },
           Sum { 192000.0, 44100.0, 12.9597245, 118.6254372 }, Sum { 192000.0, 48000.0, 10.2421836, 94.9273836 },
           Sum { 192000.0, 88200.0, 2.6260966, 25.3964571 },   Sum { 192000.0, 96000.0, 1.8336199, 16.3464461 } })
    {
        const auto row = rateCorrectionDb (expected.sessionRate, expected.fileRate);
        auto plain = 0.0;
        auto weighted = 0.0;

        for (std::size_t band = 0; band < row.size(); ++band)
        {
            plain += static_cast<double> (row[band]);
            weighted += static_cast<double> (band + 1) * static_cast<double> (row[band]);
        }

        EXPECT_NEAR (plain, expected.plain, 2e-6) << expected.sessionRate << " from " << expected.fileRate;
        EXPECT_NEAR (weighted, expected.weighted, 1e-5) << expected.sessionRate << " from " << expected.fileRate;
    }
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
