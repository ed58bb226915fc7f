#include "gui/settings/SettingsWindow.h"

#include "gui/editor/PluginEditor.h"
#include "support/Messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
struct Switch
{
    int y;
    const char* label;
    int labelWidth;
    const char* name;
    std::function<bool (const PluginModel&)> read;
    std::function<void (PluginModel&, bool)> set;
};

const std::vector<Switch>& switches()
{
    static const std::vector<Switch> all {
        { 70,
          "Show tool tips",
          200,
          "Tool Tips",
          [] (const PluginModel& model) { return model.showToolTips.load(); },
          [] (PluginModel& model, bool on) { model.showToolTips = on; } },
        { 110,
          "Reverse mousewheel action",
          200,
          "Reverse Mousewheel",
          [] (const PluginModel& model) { return model.reverseMousewheel.load(); },
          [] (PluginModel& model, bool on) { model.reverseMousewheel = on; } },
        { 150,
          "Always show band",
          200,
          "Show band",
          [] (const PluginModel& model) { return model.alwaysShowBand.load(); },
          [] (PluginModel& model, bool on) { model.alwaysShowBand = on; } },
        { 190,
          "Show frequency heatmaps",
          200,
          "Heatmap",
          [] (const PluginModel& model) { return model.showHeatmap(); },
          [] (PluginModel& model, bool on) { model.setShowHeatmap (on); } },
        { 230,
          "Show EQ notifications",
          200,
          "Notification",
          [] (const PluginModel& model) { return model.showNotifications.load(); },
          [] (PluginModel& model, bool on) { model.showNotifications = on; } },
        { 270,
          "Set plugin window to minimum height",
          250,
          "Minimise",
          [] (const PluginModel& model) { return model.minimised(); },
          [] (PluginModel& model, bool on) { model.setMinimised (on, false); } },
    };

    return all;
}

template <typename Kind>
Kind* childNamed (const juce::Component& parent, const juce::String& name)
{
    for (auto* child : parent.getChildren())
        if (auto* found = dynamic_cast<Kind*> (child); found != nullptr && found->getName() == name)
            return found;

    return nullptr;
}

juce::Label* labelOf (const juce::Component& parent, const juce::String& text)
{
    for (auto* child : parent.getChildren())
        if (auto* found = dynamic_cast<juce::Label*> (child); found != nullptr && found->getText() == text)
            return found;

    return nullptr;
}

void click (juce::Button& button)
{
    button.triggerClick();
    Messages::deliver();
}

class SettingsWindowTest : public testing::Test
{
protected:
    SettingsWindowTest()
    {
        window.setBounds (10, 20, 600, 510);
        window.setVisible (true);
    }

    [[nodiscard]] orvik::SVGCheckbox& named (const char* name)
    {
        return *childNamed<orvik::SVGCheckbox> (window, name);
    }

    PluginModel model;
    SettingsWindow window { model };
};

/** A processor that reads and writes the user's file, with its window. */
struct Instance
{
    Instance()
    {
        processor->sessionState().fillMissingStores();
        editor = std::make_unique<VelmoraAudioProcessorEditor> (*processor);
        editor->stopTimer();
    }

    [[nodiscard]] juce::Component& settings() { return *editor->main().component (MainWindow::Place::settingsWindow); }

    void openSettings() { click (editor->buttons().settingsButton); }
    void flip (const char* name) { click (*childNamed<orvik::SVGCheckbox> (settings(), name)); }
    void close() { click (*childNamed<orvik::SVGButton> (settings(), "Close")); }

    void end()
    {
        editor.reset();
        processor.reset();
    }

    std::unique_ptr<VelmoraAudioProcessor> processor = std::make_unique<VelmoraAudioProcessor>();
    std::unique_ptr<VelmoraAudioProcessorEditor> editor;
};

class SettingsFileOfAWindow : public testing::Test
{
protected:
    SettingsFileOfAWindow() { file.deleteFile(); }
    ~SettingsFileOfAWindow() override { file.deleteFile(); }

    /** What the file says of a preference, or -1 where there is no such file or word. */
    [[nodiscard]] int inFile (const char* attribute) const
    {
        juce::MemoryBlock bytes;

        if (! file.loadFileAsData (bytes))
            return -1;

        const auto root = juce::AudioProcessor::getXmlFromBinary (bytes.getData(), static_cast<int> (bytes.getSize()));

        if (root == nullptr || ! root->hasTagName ("ZVQ-PRESETS") || root->getNumChildElements() != 1)
            return -1;

        return root->getFirstChildElement()->getIntAttribute (attribute, -1);
    }

    const juce::File file = juce::File::getSpecialLocation (juce::File::userApplicationDataDirectory)
                                .getChildFile ("Brevlen/solvane-settings.dat");
};
} // namespace

TEST_F (SettingsWindowTest, everythingStandsInItsPlace)
{
    ASSERT_NE (labelOf (window, "SETTINGS"), nullptr);
    EXPECT_EQ (labelOf (window, "SETTINGS")->getBounds(), juce::Rectangle<int> (30, 40, 100, 20));

    for (const auto& row : switches())
    {
        ASSERT_NE (labelOf (window, row.label), nullptr) << row.label;
        EXPECT_EQ (labelOf (window, row.label)->getBounds(), juce::Rectangle<int> (30, row.y, row.labelWidth, 20));
        ASSERT_NE (childNamed<orvik::SVGCheckbox> (window, row.name), nullptr) << row.name;
        EXPECT_EQ (named (row.name).getBounds(), juce::Rectangle<int> (600 - 240, row.y, 59, 30));
        EXPECT_EQ (named (row.name).getTitle(), row.label);
    }

    const auto* close = childNamed<orvik::SVGButton> (window, "Close");
    ASSERT_NE (close, nullptr);
    EXPECT_EQ (close->getBounds(), juce::Rectangle<int> (600 - 105, 420, 77, 34));
    EXPECT_EQ (window.getNumChildComponents(), 6 * 2 + 2);
}

TEST_F (SettingsWindowTest, everyTextFitsItsLabel)
{
    for (auto* child : window.getChildren())
    {
        const auto* label = dynamic_cast<juce::Label*> (child);
        EXPECT_TRUE (label == nullptr || label->getFont().getStringWidth (label->getText()) <= label->getWidth())
            << child->getName();
    }
}

TEST_F (SettingsWindowTest, everySwitchWritesItsOwnFieldAtOnce)
{
    for (const auto& row : switches())
    {
        std::vector<bool> before;

        for (const auto& other : switches())
            before.push_back (other.read (model));

        click (named (row.name));

        for (std::size_t i = 0; i < switches().size(); ++i)
            EXPECT_EQ (switches()[i].read (model), &switches()[i] == &row ? ! before[i] : before[i])
                << row.name << " and " << switches()[i].name;

        click (named (row.name));
        EXPECT_EQ (row.read (model), before[static_cast<std::size_t> (&row - switches().data())]) << row.name;
    }
}

TEST_F (SettingsWindowTest, switchesShowWhatHoldsWheneverItOpens)
{
    for (const auto on : { true, false, true })
    {
        window.setVisible (false);

        for (const auto& row : switches())
            row.set (model, on);

        window.setVisible (true);

        for (const auto& row : switches())
            EXPECT_EQ (named (row.name).getToggleState(), on) << row.name;
    }
}

TEST_F (SettingsWindowTest, heatMapAndLeastHeightAreTold)
{
    std::vector<juce::String> fired;
    const std::array tokens {
        model.channels.add ([&] { fired.push_back ("heatmap"); }, Channels::showHeatmap),
        model.channels.add ([&] { fired.push_back ("minimised"); }, Channels::minimised),
    };
    click (named ("Heatmap"));
    click (named ("Minimise"));
    click (named ("Tool Tips"));
    EXPECT_THAT (fired, testing::ElementsAre ("heatmap", "minimised"));

    for (const auto token : tokens)
        model.channels.remove (token);
}

TEST_F (SettingsWindowTest, closeHidesItAndSaysSo)
{
    struct Listener final : juce::ActionListener
    {
        void actionListenerCallback (const juce::String& message) override { heard.push_back (message); }
        std::vector<juce::String> heard;
    };

    Listener listener;
    window.addActionListener (&listener);
    click (named ("Tool Tips"));
    EXPECT_TRUE (listener.heard.empty());
    click (*childNamed<orvik::SVGButton> (window, "Close"));
    EXPECT_FALSE (window.isVisible());
    EXPECT_THAT (listener.heard, testing::ElementsAre ("SETTINGS-CLOSE"));
}

//======================================================================================================================
TEST_F (SettingsFileOfAWindow, isWrittenWhenThePageCloses)
{
    Instance instance;
    instance.openSettings();
    EXPECT_TRUE (instance.settings().isVisible());
    instance.flip ("Tool Tips");
    EXPECT_EQ (inFile ("ShowToolTips"), -1) << "not before";
    instance.close();
    EXPECT_EQ (inFile ("ShowToolTips"), 1);
    EXPECT_EQ (inFile ("AlwaysShowBand"), 0);
    EXPECT_FALSE (instance.settings().isVisible());
    EXPECT_FALSE (instance.editor->buttons().settingsButton.isToggled());
    EXPECT_FALSE (instance.processor->model.interfaceState.settingsOpen);

    VelmoraAudioProcessor next;
    EXPECT_TRUE (next.model.showToolTips);
}

TEST_F (SettingsFileOfAWindow, toolTipsComeAndGoWithThePage)
{
    Instance instance;
    const auto hasToolTips = [&]
    {
        for (auto* child : instance.editor->getChildren())
            if (dynamic_cast<juce::TooltipWindow*> (child) != nullptr)
                return true;

        return false;
    };

    for (const auto wanted : { true, false })
    {
        instance.openSettings();
        instance.flip ("Tool Tips");
        EXPECT_EQ (hasToolTips(), ! wanted);
        instance.close();
        EXPECT_EQ (hasToolTips(), wanted);
    }
}

TEST_F (SettingsFileOfAWindow, theLeastHeightIsTakenAtOnceAndLeftWithTheSwitch)
{
    Instance instance;
    instance.openSettings();
    instance.flip ("Minimise");
    EXPECT_EQ (instance.editor->getHeight(), 606);
    auto* minimise = childNamed<orvik::SVGCheckbox> (instance.settings(), "Minimise");
    EXPECT_TRUE (minimise->getToggleState());
    instance.editor->setSize (680, 700);
    EXPECT_FALSE (minimise->getToggleState());
    instance.close();
    EXPECT_EQ (inFile ("Minimised"), 0);
}

TEST_F (SettingsFileOfAWindow, bandsShowTheirPanelsAtOnce)
{
    Instance instance;
    auto& room = instance.editor->main().room();
    room.pretendToShow();
    ASSERT_EQ (room.addBandByHand (3000.0f), 0);
    ASSERT_EQ (room.addBandByHand (8000.0f), 1);
    room.collapseControls();
    instance.openSettings();

    for (const auto shown : { false, true, false })
    {
        for (const auto band : { 0, 1 })
            EXPECT_EQ (room.roomBands().find (band)->panel().isShown(), shown) << band;

        instance.flip ("Show band");
    }
}

TEST_F (SettingsFileOfAWindow, ofTwoInstancesTheLastToCloseWinsInEitherOrder)
{
    for (const auto firstEndsFirst : { true, false })
    {
        file.deleteFile();
        Instance first;
        Instance second;
        first.openSettings();
        first.flip ("Reverse Mousewheel");
        first.close();
        EXPECT_EQ (inFile ("ReverseMousewheel"), 1);
        second.openSettings();
        second.flip ("Show band");
        second.close();
        EXPECT_EQ (inFile ("ReverseMousewheel"), 0) << "nothing is merged";
        EXPECT_EQ (inFile ("AlwaysShowBand"), 1);

        (firstEndsFirst ? first : second).end();
        EXPECT_EQ (inFile ("AlwaysShowBand"), firstEndsFirst ? 0 : 1);
        (firstEndsFirst ? second : first).end();
        EXPECT_EQ (inFile ("AlwaysShowBand"), firstEndsFirst ? 1 : 0);
        EXPECT_EQ (inFile ("ReverseMousewheel"), firstEndsFirst ? 0 : 1);

        VelmoraAudioProcessor next;
        EXPECT_EQ (next.model.alwaysShowBand, firstEndsFirst);
        EXPECT_EQ (next.model.reverseMousewheel, ! firstEndsFirst);
    }
}
