#include "core/MessageThreadPause.h"

#include "support/PluginRig.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <thread>

namespace
{
/** Calls back on the message thread when the framework's own timer writes a parameter into the tree. */
class TreeListener final : public juce::ValueTree::Listener
{
public:
    TreeListener (VelmoraAudioProcessor& processor, std::function<void()> callbackToUse)
        : tree (processor.getAPVTS().state), callback (std::move (callbackToUse))
    {
        tree.addListener (this);
        processor.model.setParameterValue (ParameterIds::outputGain, 3.0f);
    }

    ~TreeListener() override { tree.removeListener (this); }

    void valueTreePropertyChanged (juce::ValueTree&, const juce::Identifier&) override { callback(); }
    void valueTreeChildAdded (juce::ValueTree&, juce::ValueTree&) override { callback(); }

private:
    juce::ValueTree tree;
    std::function<void()> callback;
};

/** Calls back on the message thread when our timer tells the host of a latency. */
class LatencyListener final : public juce::AudioProcessorListener
{
public:
    LatencyListener (VelmoraAudioProcessor& processor, std::function<void()> callbackToUse)
        : callback (std::move (callbackToUse))
    {
        processor.addListener (this);
        std::thread ([&processor] { processor.model.setParameterValue (ParameterIds::mode, 1.0f); }).join();
    }

    void audioProcessorParameterChanged (juce::AudioProcessor*, int, float) override {}

    void audioProcessorChanged (juce::AudioProcessor*, const ChangeDetails& details) override
    {
        if (details.latencyChanged)
            callback();
    }

private:
    std::function<void()> callback;
};

class MessageThreadPauseTest : public testing::Test
{
protected:
    /** As a wrapper makes one whose message thread goes on. */
    static std::unique_ptr<VelmoraAudioProcessor> makeWrapped()
    {
        juce::AudioProcessor::setTypeOfNextNewPlugin (juce::AudioProcessor::wrapperType_LV2);
        auto processor = std::make_unique<VelmoraAudioProcessor> (PluginRig::plainHost());
        juce::AudioProcessor::setTypeOfNextNewPlugin (juce::AudioProcessor::wrapperType_Undefined);
        processor->prepareToPlay (48000.0, 512);
        return processor;
    }

    /** Ends the processor on another thread while this one is in a callback of one of its timers, and sees which of
        them is over first. */
    template <typename Listener>
    static void endDuringACallback()
    {
        auto processor = makeWrapped();
        std::future<void> end;
        auto called = false;

        Listener listener (*processor,
                           [&]
                           {
                               if (std::exchange (called, true))
                                   return;

                               end = std::async (std::launch::async, [&processor] { processor.reset(); });

                               // As long as any part of an ending instance takes to be gone.
                               EXPECT_EQ (end.wait_for (std::chrono::milliseconds (500)), std::future_status::timeout);
                           });

        PluginRig::serveMessagesUntil (
            [&] { return called && end.wait_for (std::chrono::seconds (0)) == std::future_status::ready; });
    }
};

TEST_F (MessageThreadPauseTest, anInstanceOutlivesACallbackOfTheFrameworksTimer)
{
    endDuringACallback<TreeListener>();
}

TEST_F (MessageThreadPauseTest, anInstanceOutlivesACallbackOfItsOwnTimer)
{
    endDuringACallback<LatencyListener>();
}

TEST_F (MessageThreadPauseTest, anInstanceEndsAlthoughTheMessageThreadWaitsForThat)
{
    auto processor = makeWrapped();
    std::thread ([&processor] { processor.reset(); }).join();
    EXPECT_EQ (processor, nullptr);

    // The message that came to nothing is still on its way, and must not hold whoever takes it.
    std::atomic<bool> served { false };
    juce::MessageManager::callAsync ([&served] { served = true; });
    PluginRig::serveMessagesUntil ([&served] { return served.load(); });
}

TEST_F (MessageThreadPauseTest, onTheMessageThreadThereIsNothingToWaitFor)
{
    // A wait for itself would last until the patience ends.
    const auto start = std::chrono::steady_clock::now();
    const MessageThreadPause pause (true);
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_LT (waited, std::chrono::milliseconds (MessageThreadPause::longestWaitMilliseconds));
}

TEST_F (MessageThreadPauseTest, noCallbackRunsDuringAPause)
{
    std::atomic<bool> over { false };
    auto calls = 0;
    auto callsDuring = 0;

    std::thread other (
        [&]
        {
            {
                const MessageThreadPause pause (true);
                juce::MessageManager::callAsync ([&] { ++calls; });
                std::this_thread::sleep_for (std::chrono::milliseconds (50));
                callsDuring = calls;
            }
            over = true;
        });

    PluginRig::serveMessagesUntil ([&] { return over && calls == 1; });
    other.join();
    EXPECT_EQ (callsDuring, 0);
}
} // namespace
