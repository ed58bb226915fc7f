#include "support/FileZoo.h"
#include "support/ProgramFixture.h"
#include "support/SanitizedBuild.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <map>
#include <thread>

#include <sys/stat.h>

namespace
{
using nlohmann::json;
using testing::HasSubstr;

/** `solvane target` with files of every kind. */
class ProgramTargetFilesTest : public ProgramFixture
{
protected:
    void SetUp() override
    {
        makeInput ("stereo.wav", "-b 16", "gain -6");
        convertWithSox (folder.path ("stereo.wav"), "-b 16", folder.path ("twice.wav"), "remix 1 1");
    }

    ProgramRun target (const std::string& file, const std::string& options, ProgramSurroundings surroundings = {})
    {
        std::vector<std::string> arguments { "target", file, "-o", "t.target", "--json" };
        std::istringstream words (options);

        for (std::string word; words >> word;)
            arguments.push_back (word);

        // A range belongs behind its file.
        if (options.starts_with ("--range"))
            std::rotate (arguments.begin() + 2, arguments.end() - 2, arguments.end());

        return solvane (arguments, std::move (surroundings));
    }

    /** What the file is compared with, measured once. */
    const json& expected (const FileZoo::Specimen& specimen)
    {
        auto& known = references[specimen.like + specimen.options];

        if (known.is_null())
            known = json::parse (target (specimen.like, specimen.options).output)["tracks"][0];

        return known;
    }

    void expectFigures (const FileZoo::Specimen& specimen, const json& track)
    {
        const auto& like = expected (specimen);
        if (specimen.sameLength)
        {
            EXPECT_NEAR (track["seconds"].get<double>(), like["seconds"].get<double>(), 1.0e-4);
        }

        const auto difference = [&] (const json& one, const json& other)
        { return one.get<double>() - other.get<double>() + specimen.softerDb; };
        EXPECT_LE (std::abs (difference (track["lufs"], like["lufs"])), specimen.tolerance);

        for (std::size_t band = 0; band < specimen.bands; ++band)
            EXPECT_LE (std::abs (difference (track["values"][band], like["values"][band])), specimen.tolerance)
                << "band " << band;
    }

    /** What a file gave, in words; what it should have given is checked. */
    std::string outcomeOf (const FileZoo::Specimen& specimen)
    {
        const auto before = folder.names();
        const auto run = target (specimen.name, specimen.options);
        EXPECT_EQ (run.exitCode, specimen.exitCode) << run.errors;

        if (run.exitCode != 0)
        {
            EXPECT_EQ (folder.names(), before);
            EXPECT_EQ (run.output, "");
            EXPECT_THAT (run.errors, testing::StartsWith ("solvane: "));
            return "refused (" + std::to_string (run.exitCode) + "): " + oneLine (run.errors.substr (9));
        }

        const auto track = json::parse (run.output)["tracks"][0];
        EXPECT_EQ (track["file"], specimen.name);
        expectFigures (specimen, track);
        std::ostringstream text;

        if (specimen.tolerance > 0.0)
            text << "read; within " << specimen.tolerance << " dB" << (specimen.bands < 9 ? bandsText (specimen) : "");
        else
            text << "read; the same figures";

        return text.str() + (run.errors.empty() ? "" : ". " + oneLine (run.errors));
    }

    static std::string bandsText (const FileZoo::Specimen& specimen)
    {
        constexpr std::array centres { 320, 640, 1000, 2000, 3000, 4000, 6000, 10000, 15000 };
        return " up to " + std::to_string (centres[specimen.bands - 1]) + " Hz";
    }

    static std::string oneLine (std::string text)
    {
        std::replace (text.begin(), text.end(), '\n', ' ');
        text.erase (text.find_last_not_of (' ') + 1);
        return text;
    }

    std::map<std::string, json> references;
};

constexpr auto tableHead = R"(# What becomes of files

A test makes each of these files with sox, ffmpeg or byte by byte, from the same seven seconds of recorded drums, hands it to
`solvane target`, and compares what it gives with this list, which it has written itself:

    SOLVANE_WRITE_FILES_TABLE=1 build/release/tests/solvane_app_tests --gtest_filter='ProgramTargetFilesTest.*'

Where a file is read, its loudness and bands are those of the recording as a WAV of 16 bits and 44.1 kHz, within so many dB. At
other rates the filters of the bands above 6 kHz have another shape, so only the bands below are compared. Where it is refused,
the number is the program's exit status, and nothing is written.

| File | What it is | What it gave |
|---|---|---|
)";

constexpr auto tableEnd = R"(
Other tests show what becomes of files in these places:

- One that is gone before its turn is named: "There is no file 'second.wav'."
- One whose name goes while it is read is read to its end; one that is cut meanwhile "ends before its header says so, or is
  damaged". An older target stays as it was.
- One in a folder that takes no files is read; a target for such a folder is refused.
- A file of 2 GB is measured within 600 MB of memory, where all of it would be 4 GB of floating point.
- Parts that are named in another order than they lie in measure what the same parts of the decoded file measure, also in a
  FLAC, MP3, Ogg Vorbis or Opus.
)";

TEST_F (ProgramTargetFilesTest, giveWhatTheTableOfFilesSays)
{
    std::string text = tableHead;

    for (const auto& specimen : FileZoo::specimens())
    {
        SCOPED_TRACE (specimen.name);
        specimen.make (folder, folder.path (specimen.name));
        text += "| `" + specimen.name + "` | " + specimen.what + " | " + outcomeOf (specimen) + " |\n";
        std::filesystem::remove (folder.path (specimen.name));
    }

    text += tableEnd;

    FileZoo::expectDocument (SOLVANE_FIXTURES "/../../docs/files.md", text);
}

TEST_F (ProgramTargetFilesTest, aBadFileLeavesTheOldTargetAndNothingElse)
{
    ASSERT_EQ (target ("stereo.wav", "").exitCode, 0);
    const auto old = bytesOf (folder.path ("t.target"));
    writeBytes (folder.path ("bad.wav"), "no sound");

    for (const auto& order : { std::vector<std::string> { "stereo.wav", "bad.wav" }, { "bad.wav", "stereo.wav" } })
        expectRefusal ({ "target", order[0], order[1], "-o", "t.target" }, 3, "'bad.wav' is not a sound file");

    EXPECT_EQ (bytesOf (folder.path ("t.target")), old);
}

/** The program waits for the other end of the first one, a pipe, while the second one goes. */
TEST_F (ProgramTargetFilesTest, aFileThatVanishesWhileTheOthersLoadIsNamed)
{
    makeInput ("second.wav");
    ASSERT_EQ (::mkfifo (folder.path ("first.wav").c_str(), 0600), 0);
    std::thread feeder (
        [this]
        {
            std::ofstream pipe (folder.path ("first.wav"), std::ios::binary);
            std::filesystem::remove (folder.path ("second.wav"));
            pipe << bytesOf (folder.path ("stereo.wav"));
        });
    const auto run = solvane ({ "target", "first.wav", "second.wav", "-o", "t.target" });
    feeder.join();
    EXPECT_EQ (run.exitCode, 3);
    EXPECT_EQ (run.errors, "solvane: There is no file 'second.wav'.\n");
    EXPECT_FALSE (folder.file ("t.target").exists());
}

TEST_F (ProgramTargetFilesTest, readsFromAFolderThatTakesNothing)
{
    ASSERT_TRUE (folder.file ("locked").createDirectory());
    ASSERT_TRUE (folder.file ("stereo.wav").copyFileTo (folder.file ("locked/in.wav")));
    std::filesystem::permissions (folder.path ("locked/in.wav"), std::filesystem::perms::owner_read);
    std::filesystem::permissions (folder.path ("locked"),
                                  std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    const auto run = target ("locked/in.wav", "");
    EXPECT_EQ (run.exitCode, 0) << run.errors;
    EXPECT_EQ (json::parse (run.output)["values"], json::parse (target ("stereo.wav", "").output)["values"]);

    // Nobody locks the folder for the system's administrator.
    if (::geteuid() != 0)
        expectRefusal ({ "target", "stereo.wav", "-o", "locked/t.target" }, 5, "Permission denied");

    std::filesystem::permissions (folder.path ("locked"), std::filesystem::perms::owner_all);
}

/** All of it would be 4 GB of floating point. */
TEST_F (ProgramTargetFilesTest, aFileOf2GigabytesNeedsLittleMemory)
{
    if (isSanitizedBuild)
        GTEST_SKIP() << "a sanitizer takes more memory than that by itself";

    FileZoo::hugeWav (0x7fff0000, false) (folder, folder.path ("huge.wav"));
    const auto run =
        target ("huge.wav", "--range 0-5", { .folder = {}, .largestFileBytes = {}, .largestMemoryBytes = 600 << 20 });
    EXPECT_EQ (run.exitCode, 0) << run.errors;
    EXPECT_EQ (json::parse (run.output)["values"], json::parse (target ("stereo.wav", "--range 0-5").output)["values"]);
}

/** What lies behind a later part is read anew. */
TEST_F (ProgramTargetFilesTest, partsCountInAnyOrderInAnyKindOfFile)
{
    for (const std::string name : { "a.flac", "a.mp3", "a.ogg", "a.opus" })
    {
        convertWithFfmpeg (recordedLoop(), "-ar 48000 -af volume=-6dB", folder.path (name));
        const auto decoded = decodedByFfmpeg (folder.path (name), 2, name == "a.opus" ? "libopus" : "");
        std::filesystem::remove (folder.path ("decoded.wav")); // or the framework would append
        writeFloatWav (folder.path ("decoded.wav"), decoded, 48000.0);
        const auto measure = [this] (const std::string& file)
        {
            const auto run = solvane ({ "target",
                                        file,
                                        "--range",
                                        "4-6",
                                        "--range",
                                        "0.5-3",
                                        "--rate",
                                        "44100",
                                        "-o",
                                        "t.target",
                                        "--json" });
            EXPECT_EQ (run.exitCode, 0) << run.errors;
            return json::parse (run.output);
        };
        const auto own = measure (name)["values"];
        const auto other = measure ("decoded.wav")["values"];

        for (std::size_t band = 0; band < own.size(); ++band)
            EXPECT_NEAR (own[band].get<double>(), other[band].get<double>(), 0.01) << name << ' ' << band;
    }
}
} // namespace
