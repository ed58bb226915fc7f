#include "files/AtomicFile.h"

#include "support/SoundFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
using testing::ElementsAre;

TEST (AtomicFileTest, holdsToTheByteWhatWasWrittenInAnyOrder)
{
    const TemporaryFolder folder;
    AtomicFile file (folder.path ("a"));
    auto stream = file.open();
    ASSERT_NE (stream, nullptr);
    std::string expected;

    // Parts below and above what a stream keeps back.
    for (const auto length : { 1, 40000, 7, 32768, 3, 100000 })
    {
        const std::string part (static_cast<std::size_t> (length), static_cast<char> ('a' + length % 7));
        EXPECT_TRUE (stream->write (part.data(), part.size()));
        expected += part;
    }

    EXPECT_TRUE (stream->setPosition (5));
    EXPECT_TRUE (stream->write ("HEAD", 4));
    expected.replace (5, 4, "HEAD");
    stream.reset();
    EXPECT_TRUE (file.commit());
    EXPECT_THAT (folder.names(), ElementsAre ("a"));
    EXPECT_TRUE (bytesOf (folder.path ("a")) == expected);
}

TEST (AtomicFileTest, saysWhyItCannotBeMade)
{
    const TemporaryFolder folder;
    AtomicFile file (folder.path ("none/a"));
    EXPECT_EQ (file.open(), nullptr);
    EXPECT_TRUE (file.hasFailed());
    EXPECT_EQ (file.reason(), "No such file or directory");
}
} // namespace
