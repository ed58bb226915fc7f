#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

/** Names of the channels, each written once. */
namespace Channels
{
inline constexpr auto canUseMasterMode = "canUseMasterMode";
inline constexpr auto integratedLUFSAnalysisChanged = "integratedLUFSAnalysisChanged";
inline constexpr auto dftAnalysisChanged = "dftAnalysisChanged";
inline constexpr auto mainBypass = "mainBypass";
inline constexpr auto transportPlaying = "transportPlaying";
inline constexpr auto showHeatmap = "showHeatmap";
inline constexpr auto stateInformationSet = "stateInformationSet";
inline constexpr auto minimised = "minimised";
inline constexpr auto smartBandsReady = "smartBandsReady";
inline constexpr auto targetsReady = "targetsReady";
inline constexpr auto createOverlapControls = "createOverlapControls";
} // namespace Channels

/** Named channels through which processor, workers and editor tell each other that something happened.

    Two locks. The list lock is held while the list of listeners is changed. The notify lock is held while a channel
    fires, and for the moment in which a changed list takes the old one's place. So the audio thread, which fires one
    channel a block, waits at most for a swap of two pointers or for another walk, and never frees an old list.

    A callback runs on the thread that fires. It must not fire a channel itself: the notify lock is not recursive. Once
    remove() has returned, the callback runs no more. */
class NotificationChannels
{
public:
    using Callback = std::function<void()>;

    NotificationChannels();

    /** Appends a listener and returns its token. Any thread but the audio thread. */
    int add (Callback callback, std::string channel);

    /** Removes every entry that bears the token, the others keep their order. Not from within a callback. */
    void remove (int token);

    /** Calls every listener of the channel, in order of registration. Any thread; real-time safe where the listeners
        are. */
    void fire (std::string_view channel) const;

    /** Takes and releases the notify lock once: when it returns, no notification that was running is still running. */
    void waitForRunningNotification() const;

private:
    struct Entry
    {
        std::string channel;
        Callback callback;
        int token;
    };

    using List = std::vector<Entry>;

    void replaceList (std::unique_ptr<List> changed);

    std::mutex listLock;
    mutable std::mutex notifyLock;
    std::unique_ptr<List> list;
    int nextToken = 0;
};
