#include "gui/editor/PluginEditor.h"
#include "gui/look/Tips.h"
#include "gui/room/RoomMouse.h"
#include "support/LocalWebServer.h"
#include "support/Messages.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{
const juce::String versionPath ("/solvane-version.html");
const juce::String newsPath ("/new-product.html");
constexpr int ticksUntilAsked = 101;

class AnnouncementsTest : public testing::Test
{
protected:
    LocalWebServer server;
    VelmoraAudioProcessor processor { {}, {}, VelmoraAudioProcessor::SettingsFile::leaveAlone };
    std::unique_ptr<VelmoraAudioProcessorEditor> editor;

    AnnouncementsTest() { processor.prepareToPlay (48000.0, 512); }

    void open()
    {
        const auto host = server.host();
        editor.reset();
        editor = std::make_unique<VelmoraAudioProcessorEditor> (processor, WebHosts { host, host, host });
        editor->stopTimer();
    }

    void tick (int times)
    {
        for (auto i = 0; i < times; ++i)
            editor->timerCallback();
    }

    void hear (const juce::String& version, const juce::String& news)
    {
        server.answer (versionPath, version);
        server.answer (newsPath, news);
        tick (ticksUntilAsked);
        server.awaitRequestFor (versionPath);
        server.awaitRequestFor (newsPath);
        const auto& state = processor.model.interfaceState;

        while (! state.updateCheckAnswered || (news == "True" && ! state.newsAvailable))
            std::this_thread::yield();

        Messages::deliver();
    }

    void hover (juce::Component& part, bool enters)
    {
        const auto event = roomMouse::eventAt (part, {});
        enters ? editor->mouseEnter (event) : editor->mouseExit (event);
    }

    /** The notice over the room, or null where none is. */
    [[nodiscard]] const juce::Label* notice()
    {
        for (const auto* child : editor->main().getChildren())
            if (const auto* label = dynamic_cast<const juce::Label*> (child);
                label != nullptr && label->isVisible() && label->getText().endsWithChar ('.'))
                return label;

        return nullptr;
    }

    [[nodiscard]] juce::String noticeText()
    {
        const auto* shown = notice();
        return shown != nullptr ? shown->getText() : juce::String();
    }
};
} // namespace

TEST_F (AnnouncementsTest, nothingIsAskedInTheFirstFourSeconds)
{
    server.answer (versionPath, "1.0.9");
    open();
    tick (ticksUntilAsked - 1);
    EXPECT_FALSE (processor.model.interfaceState.updateCheckStarted);
    editor.reset();
    EXPECT_EQ (server.requestsFor (versionPath), 0);
    open();
    tick (ticksUntilAsked);
    server.awaitRequestFor (versionPath);
    EXPECT_TRUE (processor.model.interfaceState.updateCheckStarted);
}

TEST_F (AnnouncementsTest, theHelpTipChangesWhenTheServerHasAnswered)
{
    open();
    EXPECT_EQ (editor->buttons().helpButton.getTooltip(), Tips::text (Tips::help));
    hear ("1.0.8", "");
    EXPECT_EQ (editor->buttons().helpButton.getTooltip(), "Manuals, version number and other useful links.\n ");
    EXPECT_EQ (editor->website().icon.getTooltip(), Tips::text (Tips::website));
}

TEST_F (AnnouncementsTest, anUpdateAndNewsChangeTheTips)
{
    open();
    hear ("1.0.9", "True");
    EXPECT_EQ (editor->buttons().helpButton.getTooltip(), "An update is available!\n ");
    EXPECT_EQ (editor->website().icon.getTooltip(), "A new product is available!\n ");
    EXPECT_EQ (editor->website().text.getTooltip(), "A new product is available!\n ");
}

TEST_F (AnnouncementsTest, whatWasHeardStandsInTheNextWindow)
{
    open();
    hear ("1.0.9", "True");
    open();
    EXPECT_EQ (editor->buttons().helpButton.getTooltip(), "An update is available!\n ");
    EXPECT_EQ (editor->website().icon.getTooltip(), "A new product is available!\n ");
}

TEST_F (AnnouncementsTest, anOpenHelpWindowHearsOfAnUpdate)
{
    open();
    editor->buttons().helpButton.triggerClick();
    Messages::deliver();
    auto* help = editor->main().component (MainWindow::Place::helpWindow);
    ASSERT_TRUE (help->isVisible());
    hear ("1.0.9", "");
    auto links = 0;

    for (const auto* child : help->getChildren())
        links += child->isVisible() && child->getName().startsWith ("An update is available") ? 1 : 0;

    EXPECT_EQ (links, 1);
}

TEST_F (AnnouncementsTest, theLinkAndTheNameTellOfANewProductUnderThePointer)
{
    open();
    hear ("1.0.8", "True");
    const auto& main = editor->main();

    for (juce::Component* part : std::initializer_list<juce::Component*> {
             &editor->website().icon, &editor->website().text, &editor->buttons().titleButton })
    {
        hover (*part, true);
        EXPECT_EQ (noticeText(), "A new product is available. Click the link to visit our website.");
        EXPECT_EQ (notice()->getBounds(), juce::Rectangle<int> (main.getWidth() / 2, main.getHeight() - 95, 320, 50));
        hover (*part, false);
        EXPECT_EQ (notice(), nullptr);
    }

    hover (editor->buttons().helpButton, true);
    EXPECT_EQ (notice(), nullptr);
}

TEST_F (AnnouncementsTest, theHelpButtonTellsOfAnUpdateUnderThePointer)
{
    open();
    hear ("1.0.9", "");
    hover (editor->buttons().helpButton, true);
    EXPECT_EQ (noticeText(), "An update is available. Click the '?' icon to view the link.");
    EXPECT_EQ (notice()->getBounds(), juce::Rectangle<int> (editor->main().getWidth() / 2, 50, 320, 50));
    hover (editor->buttons().helpButton, false);
    EXPECT_EQ (notice(), nullptr);
    hover (editor->website().icon, true);
    EXPECT_EQ (notice(), nullptr);
}

TEST_F (AnnouncementsTest, nothingIsSaidWhereNothingIsNew)
{
    open();
    hear ("1.0.8", "");

    for (juce::Component* part : std::initializer_list<juce::Component*> {
             &editor->website().icon, &editor->buttons().titleButton, &editor->buttons().helpButton })
    {
        hover (*part, true);
        EXPECT_EQ (notice(), nullptr);
    }
}

TEST_F (AnnouncementsTest, nothingIsSaidToWhomWantsNoNotifications)
{
    processor.model.showNotifications = false;
    open();
    hear ("1.0.9", "True");
    hover (editor->buttons().helpButton, true);
    EXPECT_EQ (notice(), nullptr);
    hover (editor->website().icon, true);
    EXPECT_EQ (notice(), nullptr);
}

TEST_F (AnnouncementsTest, aNoticeStaysWithinTheSmallestWindow)
{
    open();
    editor->setSize (570, 606);
    hear ("1.0.9", "True");
    hover (editor->website().icon, true);
    ASSERT_NE (notice(), nullptr);
    EXPECT_TRUE (editor->main().getLocalBounds().contains (notice()->getBounds()));
}

TEST_F (AnnouncementsTest, aClickTakesTheNoticeAway)
{
    open();
    hear ("1.0.9", "");
    hover (editor->buttons().helpButton, true);
    editor->buttons().helpButton.triggerClick();
    Messages::deliver();
    EXPECT_EQ (notice(), nullptr);
    EXPECT_TRUE (editor->main().isShowingPlace (MainWindow::Place::helpWindow));
}

TEST_F (AnnouncementsTest, windowAndInstanceGoWhileTheServerHangs)
{
    server.answerLiterally (versionPath, "");
    server.answerLiterally (newsPath, "HTTP/1.1 200 OK\r\n");
    open();
    tick (ticksUntilAsked);
    server.awaitRequestFor (versionPath);
    server.awaitRequestFor (newsPath);
    editor.reset();
    Messages::deliver();
    EXPECT_FALSE (processor.model.interfaceState.updateAvailable);
}
