#include "targets/TargetDocument.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <limits>

namespace
{
TargetDocument document()
{
    TargetDocument result;
    result.name = "a name";
    result.target = { -12.5f, { -20.1f, -21, -22, -23, -24, -25, -26, -27, -28, -29 } };
    return result;
}

std::string reasonFor (const std::string& text)
{
    const auto parsed = TargetDocument::parse (text);
    const auto* refusal = std::get_if<TargetDocument::Refusal> (&parsed);
    return refusal != nullptr ? refusal->reason : std::string();
}
} // namespace

TEST (TargetDocumentTest, whatIsWrittenIsReadAgainToTheBit)
{
    auto written = document();
    written.target.values[4] = -std::numeric_limits<float>::infinity();
    const auto parsed = TargetDocument::parse (written.text());
    const auto* read = std::get_if<TargetDocument> (&parsed);
    ASSERT_NE (read, nullptr);
    EXPECT_EQ (read->name, "a name");
    EXPECT_EQ (read->target.lufs, -12.5f);
    EXPECT_EQ (read->target.values, written.target.values);
}

TEST (TargetDocumentTest, tracksTellWhereTheNumbersAreFrom)
{
    auto written = document();
    TargetDocument::Track track;
    track.path = "/music/one.flac";
    track.fileRate = 44100.0;
    track.sessionRate = 48000.0;
    track.seconds = 200.0;
    track.ranges = { { 24000, 72000 } };
    track.reading.lufs = -10.0f;
    written.tracks = { track };
    const auto json = nlohmann::json::parse (written.text());
    EXPECT_EQ (json["format"], "solvane-target");
    EXPECT_EQ (json["version"], 1);
    EXPECT_EQ (json["frequencies"][9], 18000.0);
    EXPECT_EQ (json["tracks"][0]["file"], "/music/one.flac");
    EXPECT_EQ (json["tracks"][0]["sampleRate"], 44100.0);
    EXPECT_EQ (json["tracks"][0]["measuredAt"], 48000.0);
    EXPECT_EQ (json["tracks"][0]["ranges"], nlohmann::json::parse ("[[0.5, 1.5]]"));
    EXPECT_EQ (written.text().substr (0, 14), "{\n \"format\": \"");
}

TEST (TargetDocumentTest, anyBytesGiveATargetOrAReason)
{
    for (const auto* text : { "", "\xff\xfe", "[]", "7", "{}", R"({"format": 1})", "{\"format\": \"solvane-target\"" })
        EXPECT_EQ (reasonFor (text), "is not a target file of SOLVANE") << text;

    auto json = nlohmann::json::parse (document().text());
    const auto without = [&json] (const char* key, const nlohmann::json& value)
    {
        auto changed = json;
        changed[key] = value;
        return reasonFor (changed.dump());
    };

    EXPECT_EQ (reasonFor (json.dump()), "");
    EXPECT_EQ (without ("version", 2), "is a target file of another version");
    EXPECT_EQ (without ("version", "1"), "is a target file of another version");
    EXPECT_EQ (without ("lufs", nullptr), "does not hold a loudness and ten values");
    EXPECT_EQ (without ("lufs", "loud"), "does not hold a loudness and ten values");
    EXPECT_EQ (without ("values", nlohmann::json::array()), "does not hold a loudness and ten values");
    EXPECT_EQ (without ("values", nlohmann::json::parse ("[1,2,3,4,5,6,7,8,9,1e30]")),
               "holds a value that is no level");
    EXPECT_EQ (without ("values", nlohmann::json::parse ("[1,2,3,4,5,6,7,8,9,true]")),
               "holds a value that is no level");
    EXPECT_EQ (without ("name", 7), "");
}
