#include "gui/room/ParameterWatch.h"

#include "support/PluginRig.h"

#include <gmock/gmock.h>

#include <thread>
#include <vector>

class ParameterWatchTest : public testing::Test
{
protected:
    /** Serves messages until one that is posted now has come through. */
    static void serveMessages()
    {
        auto arrived = std::make_shared<bool> (false);
        juce::MessageManager::callAsync ([arrived] { *arrived = true; });
        PluginRig::serveMessagesUntil ([&] { return *arrived; });
    }

    PluginRig rig;
    std::vector<int> told;
    ParameterWatch watch { rig.processor.getAPVTS(), { "band_gain_3", "band_Q_3" }, [this] (int index) {
                              told.push_back (index);
                          } };
};

TEST_F (ParameterWatchTest, aChangeOnTheMessageThreadIsToldAtItsNextTurn)
{
    rig.set ("band_Q_3", 2.0f);
    EXPECT_TRUE (told.empty());
    serveMessages();
    EXPECT_THAT (told, testing::ElementsAre (1));
}

TEST_F (ParameterWatchTest, severalChangesOfOneParameterAreToldAsOne)
{
    for (int i = 1; i < 10; ++i)
        rig.set ("band_gain_3", static_cast<float> (i));

    serveMessages();
    EXPECT_THAT (told, testing::ElementsAre (0));
}

TEST_F (ParameterWatchTest, aChangeOnAnotherThreadWaitsUntilItIsServed)
{
    std::thread ([this] { rig.set ("band_gain_3", 5.0f); }).join();
    serveMessages();
    EXPECT_TRUE (told.empty());
    watch.serve();
    serveMessages();
    EXPECT_THAT (told, testing::ElementsAre (0));
}

TEST_F (ParameterWatchTest, otherParametersAreNotTold)
{
    rig.set ("band_gain_4", 5.0f);
    watch.serve();
    serveMessages();
    EXPECT_TRUE (told.empty());
}

TEST_F (ParameterWatchTest, nothingIsToldAfterItsEnd)
{
    {
        const ParameterWatch shortLived (
            rig.processor.getAPVTS(), { "band_gain_5" }, [this] (int) { told.push_back (99); });
        rig.set ("band_gain_5", 5.0f);
    }

    serveMessages();
    EXPECT_TRUE (told.empty());
}
