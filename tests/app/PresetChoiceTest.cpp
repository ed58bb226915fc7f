#include "app/PresetChoice.h"

#include "app/CommandError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
class PresetChoiceTest : public testing::Test
{
protected:
    [[nodiscard]] std::string refusalOf (const std::string& text) const
    {
        try
        {
            std::ignore = PresetChoice::find (library, text);
        }
        catch (const CommandError& error)
        {
            EXPECT_EQ (error.code(), ExitCode::badArguments);
            return error.what();
        }

        return {};
    }

    const Presets::Library library;
};

TEST_F (PresetChoiceTest, findsByIdNameAndGroup)
{
    EXPECT_EQ (PresetChoice::find (library, "131").name, "BALANCED MASTER");
    EXPECT_EQ (PresetChoice::find (library, "balanced master").id, 131);
    EXPECT_EQ (PresetChoice::find (library, "ROCK/classic").id, 117);
    EXPECT_EQ (PresetChoice::find (library, "HOUSE/CLASSIC").id, 85);
}

TEST_F (PresetChoiceTest, findsANameOfDigits)
{
    EXPECT_EQ (PresetChoice::find (library, "808").id, 2);
    EXPECT_EQ (PresetChoice::find (library, "BASS/808").id, 2);
}

TEST_F (PresetChoiceTest, anAmbiguousNameListsItsCandidates)
{
    EXPECT_THAT (refusalOf ("classic"), testing::HasSubstr ("85 (HOUSE/CLASSIC), 117 (ROCK/CLASSIC)"));
}

TEST_F (PresetChoiceTest, refusesWhatDoesNotExist)
{
    EXPECT_THAT (refusalOf ("0"), testing::HasSubstr ("1 to 131"));
    EXPECT_THAT (refusalOf ("132"), testing::HasSubstr ("1 to 131"));
    EXPECT_THAT (refusalOf ("4294967427"), testing::HasSubstr ("1 to 131"));
    EXPECT_THAT (refusalOf ("polka"), testing::HasSubstr ("no such preset"));
    EXPECT_FALSE (refusalOf ("").empty());
}
} // namespace
