#include "files/Remnant.h"

#include "files/AtomicFile.h"
#include "support/SoundFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
using testing::ElementsAre;

TEST (RemnantTest, isRemovedWhileItLivesAndStaysAfterwards)
{
    const TemporaryFolder folder;

    for (const auto* name : { "done", "first", "second" })
        writeBytes (folder.path (name), "bytes");

    {
        const Remnant done (folder.path ("done"));
    }

    const Remnant first (folder.path ("first"));
    const Remnant second (folder.path ("second"));
    Remnant::removeAll();
    EXPECT_THAT (folder.names(), ElementsAre ("done"));

    // Whoever has the name next has nothing to do with it.
    writeBytes (folder.path ("first"), "new");
    Remnant::removeAll();
    EXPECT_THAT (folder.names(), ElementsAre ("done", "first"));
}

TEST (RemnantTest, anUnfinishedFileIsOneAndAFinishedOneIsNot)
{
    const TemporaryFolder folder;
    AtomicFile unfinished (folder.path ("unfinished"));
    AtomicFile finished (folder.path ("finished"));
    const auto stream = unfinished.open();
    ASSERT_NE (finished.open(), nullptr);
    ASSERT_TRUE (finished.commit());
    EXPECT_EQ (folder.names().size(), 2u);
    Remnant::removeAll();
    EXPECT_THAT (folder.names(), ElementsAre ("finished"));
}
} // namespace
