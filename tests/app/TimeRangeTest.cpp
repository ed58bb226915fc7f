#include "app/TimeRange.h"

#include "app/CommandError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
using testing::HasSubstr;

std::string refusalOf (const std::string& text)
{
    try
    {
        std::ignore = TimeRange::parse (text);
    }
    catch (const CommandError& error)
    {
        EXPECT_EQ (error.code(), ExitCode::badArguments);
        return error.what();
    }

    return "taken";
}

TEST (TimeRangeTest, readsSecondsAndMinutesAndHours)
{
    EXPECT_EQ (TimeRange::parse ("30-90.5").start, 30.0);
    EXPECT_EQ (TimeRange::parse ("30-90.5").end, 90.5);
    EXPECT_EQ (TimeRange::parse ("0:30-1:30.25").start, 30.0);
    EXPECT_EQ (TimeRange::parse ("0:30-1:30.25").end, 90.25);
    EXPECT_EQ (TimeRange::parse ("5-1:00:00").end, 3600.0);
    EXPECT_EQ (TimeRange::parse ("90:00-91:00").start, 5400.0);
}

TEST (TimeRangeTest, takesAnOpenEnd)
{
    EXPECT_EQ (TimeRange::parse ("12-").start, 12.0);
    EXPECT_EQ (TimeRange::parse ("12-").end, std::nullopt);
}

TEST (TimeRangeTest, refusesWhatIsNoRange)
{
    EXPECT_THAT (refusalOf ("12"), HasSubstr ("a dash is missing"));
    EXPECT_THAT (refusalOf ("20-10"), HasSubstr ("it ends before it starts"));
    EXPECT_THAT (refusalOf ("10-10"), HasSubstr ("it ends before it starts"));

    for (const auto* text :
         { "-10", "a-b", "1:60-2:00", "1.5:00-2:00", "1:2:3:4-5", "1:-2", ":1-2", "nan-2", "1e3-2", "1-2-3" })
        EXPECT_THAT (refusalOf (text), HasSubstr ("is no time")) << text;
}

TEST (TimeRangeTest, writesTimesAsAClockDoes)
{
    EXPECT_EQ (TimeRange::textOf (0.0), "0:00");
    EXPECT_EQ (TimeRange::textOf (132.9), "2:12");
    EXPECT_EQ (TimeRange::textOf (3723.0), "1:02:03");
}
} // namespace
