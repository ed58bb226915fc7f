#include "core/model/HostTraits.h"

#include "support/PluginRig.h"

#include <gtest/gtest.h>

namespace
{
using Host = juce::PluginHostType;

HostDescription describe (Host::HostType type, const juce::String& path = "/opt/host")
{
    return { type, path, []() noexcept { return 0; } };
}

/** The priority that the host's audio thread seems to have. */
int scriptedPriority = 0;

HostDescription withScriptedPriority (Host::HostType type, const juce::String& path = "/opt/host")
{
    scriptedPriority = 0;
    return { type, path, []() noexcept { return scriptedPriority; } };
}

TEST (HostTraitsTest, knowsEveryVersionOfItsHosts)
{
    for (const auto type : { Host::SteinbergWavelab5,
                             Host::SteinbergWavelab6,
                             Host::SteinbergWavelab7,
                             Host::SteinbergWavelab8,
                             Host::SteinbergWavelabGeneric })
        EXPECT_TRUE (HostTraits (describe (type)).hostIsWavelab) << int (type);

    for (const auto type : { Host::SteinbergCubase4,
                             Host::SteinbergCubase5,
                             Host::SteinbergCubase5Bridged,
                             Host::SteinbergCubase6,
                             Host::SteinbergCubase7,
                             Host::SteinbergCubase8,
                             Host::SteinbergCubase8_5,
                             Host::SteinbergCubase9,
                             Host::SteinbergCubase9_5,
                             Host::SteinbergCubase10,
                             Host::SteinbergCubase10_5,
                             Host::SteinbergCubaseGeneric })
        EXPECT_TRUE (HostTraits (describe (type)).hostIsCubase) << int (type);

    for (const auto type : { Host::AbletonLive6, Host::AbletonLive11, Host::AbletonLiveGeneric })
        EXPECT_TRUE (HostTraits (describe (type)).hostIsLive) << int (type);

    EXPECT_TRUE (HostTraits (describe (Host::FruityLoops)).hostIsFLStudio);
    EXPECT_TRUE (HostTraits (describe (Host::AvidProTools)).hostIsProTools);
}

TEST (HostTraitsTest, anUnknownHostHasNoTrait)
{
    const HostTraits traits (describe (Host::UnknownHost));
    EXPECT_FALSE (traits.hostIsWavelab || traits.hostIsFLStudio || traits.hostIsCubase || traits.hostIsLive
                  || traits.hostIsOzone || traits.hostIsProTools || traits.hostIsAuval);
    EXPECT_FALSE (HostTraits (describe (Host::SteinbergNuendo5)).hostIsCubase);
}

TEST (HostTraitsTest, findsOzoneInAnyCaseAndAuvalAsWritten)
{
    EXPECT_TRUE (HostTraits (describe (Host::UnknownHost, "/opt/iOZONE 9/host")).hostIsOzone);
    EXPECT_TRUE (HostTraits (describe (Host::UnknownHost, "/usr/bin/auvaltool")).hostIsAuval);
    EXPECT_FALSE (HostTraits (describe (Host::UnknownHost, "/usr/bin/AUVAL")).hostIsAuval);
}

TEST (HostTraitsTest, thisProcessHasAPathAndAPriority)
{
    const auto host = HostDescription::ofThisProcess();
    EXPECT_TRUE (host.applicationPath.endsWith ("solvane_core_tests")) << host.applicationPath;
    EXPECT_EQ (host.threadPriority, &currentThreadPriority);
    EXPECT_GE (host.threadPriority(), 0);
}

struct OfflineCase
{
    const char* name;
    Host::HostType type;
    const char* path;
    bool believesTheHost;
};

class OfflineJudgementTest : public testing::TestWithParam<OfflineCase>
{
};

TEST_P (OfflineJudgementTest, followsTheHostsReportOrThePriority)
{
    const auto& tested = GetParam();
    PluginRig rig (withScriptedPriority (tested.type, tested.path));
    rig.prepare (48000.0, 64);

    rig.processor.setNonRealtime (true);
    EXPECT_EQ (rig.processor.isOfflineRender(), tested.believesTheHost);
    rig.processor.setNonRealtime (false);
    EXPECT_FALSE (rig.processor.isOfflineRender());

    scriptedPriority = 70;
    rig.runSilence (64, 64);
    EXPECT_FALSE (rig.processor.isOfflineRender()) << "the highest priority so far";
    scriptedPriority = 5;
    rig.runSilence (64, 64);
    EXPECT_EQ (rig.processor.isOfflineRender(), ! tested.believesTheHost);
    scriptedPriority = 70;
    rig.runSilence (64, 64);
    EXPECT_FALSE (rig.processor.isOfflineRender());
}

INSTANTIATE_TEST_SUITE_P (Hosts,
                          OfflineJudgementTest,
                          testing::Values (OfflineCase { "unknown", Host::UnknownHost, "/opt/host", true },
                                           OfflineCase { "logic", Host::AppleLogic, "/opt/ozone", true },
                                           OfflineCase { "proTools", Host::AvidProTools, "/opt/ozone", true },
                                           OfflineCase { "reaper", Host::Reaper, "/opt/Ozone", true },
                                           OfflineCase { "reason", Host::Reason, "/opt/ozone", true },
                                           OfflineCase { "cubase", Host::SteinbergCubase10, "/opt/ozone", true },
                                           OfflineCase { "studioOne", Host::StudioOne, "/opt/ozone", true },
                                           OfflineCase { "live", Host::AbletonLive11, "/opt/host", true },
                                           OfflineCase { "flStudio", Host::FruityLoops, "/opt/host", false },
                                           OfflineCase { "wavelab", Host::SteinbergWavelab8, "/opt/host", false },
                                           OfflineCase { "ozone", Host::UnknownHost, "/opt/Ozone 9", false }),
                          [] (const auto& tested) { return tested.param.name; });

TEST (OfflineJudgementTest, aLowerPriorityRendersUpdatesOnTheCallingThread)
{
    PluginRig rig (withScriptedPriority (Host::UnknownHost, "/opt/ozone"));
    rig.prepare (48000.0, 64);
    rig.settle();
    scriptedPriority = 50;
    rig.runSilence (64, 64);
    scriptedPriority = 1;
    rig.runSilence (64, 64);

    rig.setBand (0, 8000.0f, 3.0f);
    EXPECT_TRUE (rig.processor.bandEngine().block (BlockProcessorMode::stereo).tapsReady)
        << "designed before the setter returned";
    EXPECT_EQ (rig.processor.bandEngine().worker (BlockProcessorMode::stereo).postedCount(), 0);
}
} // namespace
