#include "core/model/HostTraits.h"

#if JUCE_WINDOWS
    #include <windows.h>
#elif JUCE_MAC
    #include <pthread.h>
#else
    #include <sched.h>
#endif

int currentThreadPriority() noexcept
{
#if JUCE_WINDOWS
    return GetThreadPriority (GetCurrentThread());
#elif JUCE_MAC
    sched_param parameters {};
    int policy = 0;
    return pthread_getschedparam (pthread_self(), &policy, &parameters) == 0 ? parameters.sched_priority : 0;
#else
    // pthread_getschedparam may answer from a cache, the kernel does not.
    sched_param parameters {};
    return sched_getparam (0, &parameters) == 0 ? parameters.sched_priority : 0;
#endif
}

HostDescription HostDescription::ofThisProcess()
{
    return { juce::PluginHostType().type,
             juce::File::getSpecialLocation (juce::File::hostApplicationPath).getFullPathName(),
             &currentThreadPriority };
}

namespace
{
juce::PluginHostType hostTypeOf (const HostDescription& description)
{
    juce::PluginHostType host;
    host.type = description.type;
    return host;
}

bool believesOwnReport (const HostDescription& description)
{
    const auto host = hostTypeOf (description);

    if (host.isLogic() || host.isProTools() || host.isReaper() || host.isReason() || host.isCubase()
        || host.isStudioOne())
        return true;

    return ! (host.isFruityLoops() || host.isWavelab() || description.applicationPath.containsIgnoreCase ("ozone"));
}
} // namespace

HostTraits::HostTraits (const HostDescription& description)
    : hostIsWavelab (hostTypeOf (description).isWavelab()),
      hostIsFLStudio (hostTypeOf (description).isFruityLoops()),
      hostIsCubase (hostTypeOf (description).isCubase()),
      hostIsLive (hostTypeOf (description).isAbletonLive()),
      hostIsOzone (description.applicationPath.containsIgnoreCase ("ozone")),
      hostIsProTools (hostTypeOf (description).isProTools()),
      hostIsAuval (description.applicationPath.contains ("auval")),
      reportsOfflineRendering (believesOwnReport (description))
{
}
