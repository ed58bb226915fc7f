#include "gui/band/BandFade.h"

#include <gtest/gtest.h>

TEST (BandFadeTest, brightensInSixStepsAndRests)
{
    BandFade fade;
    EXPECT_FLOAT_EQ (fade.amount(), 0.7f);
    EXPECT_FALSE (fade.tick());
    fade.setBright (true);

    for (int step = 0; step < 6; ++step)
        EXPECT_TRUE (fade.tick());

    EXPECT_FALSE (fade.tick());
    EXPECT_FLOAT_EQ (fade.amount(), 1.0f);
    fade.setBright (false);
    EXPECT_TRUE (fade.tick());
    EXPECT_FLOAT_EQ (fade.amount(), 0.95f);
}

TEST (BandFadeTest, jumpsWhereItIsToldTo)
{
    BandFade fade;
    fade.setBright (true);
    fade.jump();
    EXPECT_TRUE (fade.settled());
    EXPECT_FLOAT_EQ (fade.amount(), 1.0f);
}
