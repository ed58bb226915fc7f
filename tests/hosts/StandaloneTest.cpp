#include "support/ProgramRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
using testing::HasSubstr;
using testing::IsEmpty;

constexpr auto standalone = SOLVANE_DIST "/standalone/SOLVANE";

/** Runs it without a display, or with one that is not there. */
ProgramRun runWithout (const std::string& display, const std::vector<std::string>& arguments)
{
    std::vector<std::string> all { "-u", "DISPLAY" };

    if (! display.empty())
        all.push_back ("DISPLAY=" + display);

    all.push_back (standalone);
    all.insert (all.end(), arguments.begin(), arguments.end());
    return runProgram ("/usr/bin/env", all);
}

class StandaloneTest : public testing::TestWithParam<std::string>
{
};

TEST_P (StandaloneTest, saysInASentenceThatItNeedsADisplay)
{
    const auto run = runWithout (GetParam(), {});
    EXPECT_EQ (run.exitCode, 1);
    EXPECT_THAT (run.output, IsEmpty());
    EXPECT_THAT (run.errors, HasSubstr ("needs a display"));
    EXPECT_EQ (std::count (run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
}

TEST_P (StandaloneTest, tellsHelpAndVersionWithoutAWindow)
{
    for (const auto* word : { "--help", "-h" })
    {
        const auto run = runWithout (GetParam(), { word });
        EXPECT_EQ (run.exitCode, 0);
        EXPECT_THAT (run.output, HasSubstr ("Usage: SOLVANE"));
        EXPECT_THAT (run.errors, IsEmpty());
    }

    const auto run = runWithout (GetParam(), { "--version" });
    EXPECT_EQ (run.exitCode, 0);
    EXPECT_EQ (run.output, "SOLVANE " SOLVANE_VERSION "\n");
    EXPECT_THAT (run.errors, IsEmpty());
}

TEST_P (StandaloneTest, refusesWhatItDoesNotKnow)
{
    const auto run = runWithout (GetParam(), { "--volume" });
    EXPECT_EQ (run.exitCode, 1);
    EXPECT_THAT (run.errors, HasSubstr ("'--volume'"));
}

INSTANTIATE_TEST_SUITE_P (Displays,
                          StandaloneTest,
                          testing::Values ("", ":987", "nowhere.invalid:0"),
                          [] (const auto& tested) {
                              return std::string (tested.index == 0   ? "none"
                                                  : tested.index == 1 ? "absent"
                                                                      : "elsewhere");
                          });
} // namespace
