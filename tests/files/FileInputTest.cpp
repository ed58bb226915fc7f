#include "files/FileInput.h"

#include "support/SoundFiles.h"

#include <gtest/gtest.h>

#include <array>

namespace
{
TEST (FileInputTest, readsFromAnywhereAndNoFurtherThanTheEnd)
{
    const TemporaryFolder folder;
    writeBytes (folder.path ("a"), "0123456789");
    FileInput input (Descriptor::toRead (folder.path ("a")));
    std::array<char, 16> bytes {};
    EXPECT_EQ (input.getTotalLength(), 10);
    EXPECT_TRUE (input.setPosition (6));
    EXPECT_EQ (input.read (bytes.data(), 16), 4);
    EXPECT_EQ (std::string (bytes.data(), 4), "6789");
    EXPECT_TRUE (input.isExhausted());
    EXPECT_TRUE (input.setPosition (2));
    EXPECT_EQ (input.read (bytes.data(), 3), 3);
    EXPECT_EQ (input.getPosition(), 5);
    EXPECT_FALSE (input.setPosition (-1));
}

TEST (FileInputTest, givesNothingMoreOnceItMayNotGoOn)
{
    const TemporaryFolder folder;
    writeBytes (folder.path ("a"), "0123456789");
    auto mayGoOn = true;
    FileInput input (Descriptor::toRead (folder.path ("a")), [&] { return mayGoOn; });
    std::array<char, 16> bytes {};
    EXPECT_EQ (input.read (bytes.data(), 4), 4);
    mayGoOn = false;
    EXPECT_EQ (input.read (bytes.data(), 4), 0);
}
} // namespace
