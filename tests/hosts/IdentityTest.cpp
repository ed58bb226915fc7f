#include "hosts/HostRun.h"
#include "hosts/HostedPlugin.h"
#include "hosts/SharedLibrary.h"
#include "hosts/Vst2Host.h"
#include "support/PluginRig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pluginterfaces/base/ipluginbase.h>

#include <map>

// Everything here is written out on purpose: hosts find a plug-in in a saved session by its ids.

namespace
{
constexpr auto expectedLv2Uri = "https://www.solvane.example/lv2/solvane";

TEST (IdentityTest, theClassicInterfaceTellsItsIdNameAndVendor)
{
    const Vst2Host host (libraryPathOf (PluginFormat::vst2));
    EXPECT_EQ (host.uniqueId(), 0x536c766e); // "Slvn"
    EXPECT_EQ (host.version(), 0x10008);
    EXPECT_EQ (host.effectName(), "SOLVANE");
    EXPECT_EQ (host.vendor(), "Brevlen");
    EXPECT_TRUE (host.canDo ("bypass"));
}

TEST (IdentityTest, theClassicInterfaceHasTwoInputsAndTwoOutputs)
{
    const Vst2Host host (libraryPathOf (PluginFormat::vst2));
    EXPECT_EQ (host.inputCount(), 2);
    EXPECT_EQ (host.outputCount(), 2);
}

using LayoutOfFormatTest = testing::TestWithParam<PluginFormat>;

TEST_P (LayoutOfFormatTest, surroundIsRefusedAndStereoGoesOn)
{
    const auto plugin = HostedPlugin::open (GetParam());
    EXPECT_FALSE (plugin->setChannelCount (6));

    plugin->prepare (48000.0, 512);
    hostRun::settle (*plugin, 2, 512);
    const auto input = signals::noise (2, 2048, 51);
    EXPECT_EQ (hostRun::differenceFromDelayed (hostRun::run (*plugin, input, 512), input, 178), 0.0f);
}

INSTANTIATE_TEST_SUITE_P (Formats,
                          LayoutOfFormatTest,
                          testing::Values (PluginFormat::vst2, PluginFormat::vst3, PluginFormat::lv2),
                          [] (const auto& tested) { return nameOf (tested.param); });

TEST (IdentityTest, theVst3FactoryTellsTheClassIdsOfProcessorAndController)
{
    using Factory = Steinberg::IPluginFactory* (*) ();
    using ModuleCall = bool (*) (void*);

    const SharedLibrary library (libraryPathOf (PluginFormat::vst3));
    ASSERT_TRUE (library.function<ModuleCall> ("ModuleEntry") (library.handle()));

    std::vector<std::string> classes;
    {
        auto* factory = library.function<Factory> ("GetPluginFactory")();
        ASSERT_NE (factory, nullptr);

        for (int index = 0; index < factory->countClasses(); ++index)
        {
            Steinberg::PClassInfo info {};
            ASSERT_EQ (factory->getClassInfo (index, &info), Steinberg::kResultOk);
            classes.push_back (juce::String::toHexString (info.cid, sizeof (info.cid), 0).toStdString() + " "
                               + info.category + " " + info.name);
        }

        factory->release();
    }

    EXPECT_TRUE (library.function<bool (*)()> ("ModuleExit")());
    EXPECT_THAT (classes,
                 testing::ElementsAre ("abcdef019182faeb4272766c536c766e Audio Module Class SOLVANE",
                                       "abcdef011234abcd4272766c536c766e Component Controller Class SOLVANE"));
}

TEST (IdentityTest, theLv2BundleHasItsUriInTheWorldOfOrdinaryHosts)
{
    juce::ChildProcess list;
    ASSERT_TRUE (list.start (juce::StringArray { "env", "LV2_PATH=" SOLVANE_DIST "/lv2", SOLVANE_LV2LS }));
    EXPECT_EQ (list.readAllProcessOutput().trim(), expectedLv2Uri);

    juce::ChildProcess info;
    ASSERT_TRUE (
        info.start (juce::StringArray { "env", "LV2_PATH=" SOLVANE_DIST "/lv2", SOLVANE_LV2INFO, expectedLv2Uri }));
    const auto text = info.readAllProcessOutput();
    EXPECT_TRUE (text.contains (expectedLv2Uri)) << text;
    EXPECT_TRUE (text.contains ("SOLVANE")) << text;
    EXPECT_TRUE (text.contains ("Brevlen")) << text;
}

/** The names in a file's symbol table, or in the one that other libraries see. */
std::vector<std::string> symbolsOf (const std::string& path, bool onlyOffered)
{
    juce::StringArray command { SOLVANE_NM, "--defined-only" };

    if (onlyOffered)
        command.add ("--dynamic");

    command.add (path);
    juce::ChildProcess process;

    if (! process.start (command))
        return { "nm could not be started" };

    std::vector<std::string> names;

    for (const auto& line : juce::StringArray::fromLines (process.readAllProcessOutput()))
    {
        const auto words = juce::StringArray::fromTokens (line, " ", {});

        if (words.size() >= 3 && words[1].length() == 1)
            names.push_back (words[2].toStdString());
    }

    return names;
}

TEST (IdentityTest, librariesOfferTheirEntryPointsAndNothingElse)
{
    EXPECT_THAT (symbolsOf (libraryPathOf (PluginFormat::vst2), true),
                 testing::UnorderedElementsAre ("VSTPluginMain", "main"));
    EXPECT_THAT (symbolsOf (libraryPathOf (PluginFormat::vst3), true),
                 testing::UnorderedElementsAre ("GetPluginFactory", "ModuleEntry", "ModuleExit"));
    EXPECT_THAT (symbolsOf (libraryPathOf (PluginFormat::lv2), true),
                 testing::UnorderedElementsAre ("lv2_descriptor", "lv2ui_descriptor"));
}

struct Product
{
    std::string path;
    std::string symbols;
};

class SymbolsTest : public testing::TestWithParam<Product>
{
};

TEST_P (SymbolsTest, stayOutOfWhatIsInstalledAndAreFoundByADebugger)
{
    if (! SOLVANE_IS_STRIPPED)
        GTEST_SKIP() << "only a release is stripped";

    EXPECT_THAT (symbolsOf (GetParam().path, false), testing::IsEmpty());

    const std::string symbols (SOLVANE_DIST "/debug/" + GetParam().symbols);
    EXPECT_THAT (symbolsOf (symbols, false), testing::Contains (testing::HasSubstr ("VelmoraAudioProcessor")));

    juce::MemoryBlock product;
    ASSERT_TRUE (juce::File (juce::String (GetParam().path)).loadFileAsData (product));
    EXPECT_NE (std::string_view (product.begin(), product.getSize()).find (GetParam().symbols), std::string_view::npos)
        << "no link to the symbols";
}

INSTANTIATE_TEST_SUITE_P (
    Products,
    SymbolsTest,
    testing::Values (Product { libraryPathOf (PluginFormat::vst2), "SOLVANE-vst2.debug" },
                     Product { libraryPathOf (PluginFormat::vst3), "SOLVANE-vst3.debug" },
                     Product { libraryPathOf (PluginFormat::lv2), "SOLVANE-lv2.debug" },
                     Product { SOLVANE_DIST "/standalone/SOLVANE", "SOLVANE-standalone.debug" },
                     Product { SOLVANE_DIST "/bin/solvane", "solvane.debug" }),
    [] (const auto& tested)
    {
        auto name = juce::String (tested.param.symbols).upToFirstOccurrenceOf (".", false, false);
        return name.retainCharacters ("abcdefghijklmnopqrstuvwxyzVST0123456789SOLANE").toStdString();
    });

using ParameterListTest = testing::TestWithParam<PluginFormat>;

TEST_P (ParameterListTest, showsTheHostAllParametersInOrderWithNamesAndTexts)
{
    const auto plugin = HostedPlugin::open (GetParam());
    PluginRig rig;
    const auto& own = rig.processor.getParameters();
    ASSERT_EQ (own.size(), 86);
    ASSERT_EQ (plugin->parameterCount(), 86);

    for (int index = 0; index < own.size(); ++index)
    {
        EXPECT_EQ (plugin->parameterName (index), own[index]->getName (128).toStdString());
        EXPECT_EQ (plugin->parameter (index), own[index]->getValue()) << plugin->parameterName (index);
        EXPECT_EQ (plugin->parameterText (index), own[index]->getCurrentValueAsText().toStdString())
            << plugin->parameterName (index);

        plugin->setParameter (index, 1.0f);
        EXPECT_EQ (plugin->parameterText (index), own[index]->getText (1.0f, 128).toStdString())
            << plugin->parameterName (index);
    }
}

INSTANTIATE_TEST_SUITE_P (Formats,
                          ParameterListTest,
                          testing::Values (PluginFormat::vst2, PluginFormat::vst3),
                          [] (const auto& tested) { return nameOf (tested.param); });

/** This format has no texts of the plug-in's, in the order of its host, and adds a switch for bypass. */
TEST (Lv2ParameterListTest, showsTheHostAllParametersWithNamesAndDefaults)
{
    const auto plugin = HostedPlugin::open (PluginFormat::lv2);
    PluginRig rig;
    std::map<std::string, float> defaults;

    for (int index = 0; index < plugin->parameterCount(); ++index)
        defaults[plugin->parameterName (index)] = plugin->parameter (index);

    EXPECT_EQ (defaults.size(), 87u);
    EXPECT_EQ (defaults.count ("Bypass"), 1u);

    for (const auto* parameter : rig.processor.getParameters())
    {
        const auto& ranged = dynamic_cast<const juce::RangedAudioParameter&> (*parameter);
        const auto name = ranged.getName (128).toStdString();
        ASSERT_EQ (defaults.count (name), 1u) << name;
        EXPECT_NEAR (defaults[name], plugin->normalise (ranged, ranged.convertFrom0to1 (ranged.getValue())), 1.0e-6f)
            << name;
    }
}
} // namespace
