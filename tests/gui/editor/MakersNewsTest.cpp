#include "gui/editor/MakersNews.h"

#include "support/LocalWebServer.h"
#include "support/Messages.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{
const juce::String versionPath ("/solvane-version.html");
const juce::String newsPath ("/new-product.html");

class MakersNewsTest : public testing::Test
{
protected:
    LocalWebServer server;
    InterfaceState state;
    int answers = 0;
    std::unique_ptr<MakersNews> news;

    void open (const juce::String& host)
    {
        news.reset();
        news = std::make_unique<MakersNews> (state, WebHosts { host, host, host }, [this] { ++answers; });
    }

    void open() { open (server.host()); }

    /** Asks a server that answers so, and waits for both answers. */
    void hear (const juce::String& version, const juce::String& newsText)
    {
        server.answer (versionPath, version);
        server.answer (newsPath, newsText);
        open();
        news->askOnce();
        awaitAnswers (2);
    }

    void awaitAnswers (int count)
    {
        while (answers < count)
        {
            Messages::deliver();
            std::this_thread::yield();
        }
    }
};
} // namespace

TEST_F (MakersNewsTest, findsBothAndTellsOfBoth)
{
    hear ("1.0.9", "True");
    EXPECT_TRUE (state.updateAvailable);
    EXPECT_TRUE (state.newsAvailable);
    EXPECT_TRUE (state.updateCheckAnswered);
}

TEST_F (MakersNewsTest, nothingNewIsAnAnswerToo)
{
    hear ("1.0.8", "False");
    EXPECT_FALSE (state.updateAvailable);
    EXPECT_FALSE (state.newsAvailable);
    EXPECT_TRUE (state.updateCheckAnswered);
}

TEST_F (MakersNewsTest, asksOnceInTheLifeOfAnInstanceWhicheverWindowIsOpen)
{
    hear ("1.0.9", "True");
    EXPECT_TRUE (news->hasAsked());
    news->askOnce();
    open();
    news->askOnce();
    EXPECT_FALSE (news->hasAsked());
    news.reset();
    EXPECT_EQ (server.requestsFor (versionPath), 1);
    EXPECT_EQ (server.requestsFor (newsPath), 1);
}

TEST_F (MakersNewsTest, aMissingServerIsNothingNewAndIsNotAskedAgain)
{
    juce::String abandoned;

    {
        const LocalWebServer gone;
        abandoned = gone.host();
    }

    open (abandoned);
    news->askOnce();
    awaitAnswers (2);
    EXPECT_FALSE (state.updateAvailable);
    EXPECT_FALSE (state.newsAvailable);
    open();
    news->askOnce();
    EXPECT_FALSE (news->hasAsked());
}

TEST_F (MakersNewsTest, placeholdersAreNotAsked)
{
    open ("https://www.solvane.example");
    news->askOnce();
    EXPECT_FALSE (news->hasAsked());
    EXPECT_TRUE (state.updateCheckStarted);
    EXPECT_FALSE (state.updateCheckAnswered);
    EXPECT_EQ (answers, 0);
}

TEST_F (MakersNewsTest, goesWhileTheServerHangs)
{
    server.answerLiterally (versionPath, "");
    server.answerLiterally (newsPath, LocalWebServer::header (200, 100) + "Tr");
    open();
    news->askOnce();
    server.awaitRequestFor (versionPath);
    server.awaitRequestFor (newsPath);
    news.reset();
    Messages::deliver();
    EXPECT_EQ (answers, 0);
    EXPECT_FALSE (state.updateAvailable);
    EXPECT_FALSE (state.newsAvailable);
}

TEST_F (MakersNewsTest, whatIsPostedFindsNobodyAfterItHasGone)
{
    server.answer (versionPath, "1.0.9");
    server.answer (newsPath, "True");
    open();
    news->askOnce();

    while (! state.updateAvailable || ! state.newsAvailable)
        std::this_thread::yield();

    news.reset();
    Messages::deliver();
    EXPECT_EQ (answers, 0);
}
