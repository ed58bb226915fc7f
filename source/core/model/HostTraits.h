#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

/** Priority of the calling thread as an integer: 0 for normal threads on Linux, 1 to 99 for real-time ones. Real-time
    safe: one system call. */
[[nodiscard]] int currentThreadPriority() noexcept;

/** What we ask the surroundings about the host. As it stands it is one that no trait knows, such as the command-line
    program: what the folder is called that it lies in must not change the sound. */
struct HostDescription
{
    juce::PluginHostType::HostType type = juce::PluginHostType::UnknownHost;
    juce::String applicationPath;
    int (*threadPriority)() noexcept = &currentThreadPriority;

    /** The host that this process is. */
    [[nodiscard]] static HostDescription ofThisProcess();
};

/** What the host is, as far as it matters to us. Set once; read from any thread. */
struct HostTraits
{
    explicit HostTraits (const HostDescription& description);

    const bool hostIsWavelab;
    const bool hostIsFLStudio;
    const bool hostIsCubase;
    const bool hostIsLive;
    const bool hostIsOzone;
    const bool hostIsProTools;
    const bool hostIsAuval;

    /** True for hosts whose own report of offline rendering is believed. */
    const bool reportsOfflineRendering;
};
