#include "services/WebRequest.h"

#include "support/LocalWebServer.h"

#include <gtest/gtest.h>

#include <future>

namespace
{
class WebRequestTest : public testing::Test
{
protected:
    LocalWebServer server;

    [[nodiscard]] std::optional<juce::String> ask (const juce::String& path) const
    {
        WebRequest request (juce::URL (server.host() + path));
        return request.read();
    }

    /** Asks, calls it off once the server has said all that it will say, and waits for the end. */
    std::optional<juce::String> askAndCancel (const juce::String& path) const
    {
        WebRequest request (juce::URL (server.host() + path));
        auto answer = std::async (std::launch::async, [&request] { return request.read(); });
        server.awaitRequestFor (path);
        request.cancel();
        return answer.get();
    }
};
} // namespace

TEST_F (WebRequestTest, readsTheWholeAnswer)
{
    server.answer ("/text", "1.0.9\n");
    EXPECT_EQ (ask ("/text"), juce::String ("1.0.9\n"));
    EXPECT_EQ (server.requestsFor ("/text"), 1);
}

TEST_F (WebRequestTest, readsAnEmptyAnswer)
{
    server.answer ("/empty", "");
    EXPECT_EQ (ask ("/empty"), juce::String());
}

TEST_F (WebRequestTest, readsAMegabyte)
{
    const auto megabyte = juce::String::repeatedString ("abcdefgh", 1 << 17);
    server.answer ("/long", megabyte);
    EXPECT_EQ (ask ("/long"), megabyte);
}

TEST_F (WebRequestTest, anAnswerBeyondTheLimitIsNone)
{
    server.answer ("/endless", juce::String::repeatedString ("0123456789abcdef", WebRequest::longestAnswer / 16 + 1));
    EXPECT_EQ (ask ("/endless"), std::nullopt);
}

TEST_F (WebRequestTest, followsARedirection)
{
    server.redirect ("/old", server.host() + "/new");
    server.answer ("/new", "1.0.8");
    EXPECT_EQ (ask ("/old"), juce::String ("1.0.8"));
}

TEST_F (WebRequestTest, aCircleOfRedirectionsEnds)
{
    server.redirect ("/round", server.host() + "/round");
    EXPECT_EQ (ask ("/round"), std::nullopt);
    EXPECT_GT (server.requestsFor ("/round"), 1);
}

TEST_F (WebRequestTest, aRefusalIsNoAnswer)
{
    EXPECT_EQ (ask ("/missing"), std::nullopt);
    EXPECT_EQ (server.requestsFor ("/missing"), 1);
    server.answerLiterally ("/broken", LocalWebServer::header (500, 3) + "109");
    EXPECT_EQ (ask ("/broken"), std::nullopt);
}

TEST_F (WebRequestTest, noServerIsNoAnswer)
{
    juce::String abandoned;

    {
        const LocalWebServer gone;
        abandoned = gone.host();
    }

    WebRequest request (juce::URL (abandoned + "/text"));
    EXPECT_EQ (request.read(), std::nullopt);
}

TEST_F (WebRequestTest, aPlaceholderIsNeverAsked)
{
    WebRequest request (juce::URL ("http://www.solvane.example/text"));
    EXPECT_EQ (request.read(), std::nullopt);
}

TEST_F (WebRequestTest, aServerThatSaysNothingCanBeLeft)
{
    server.answerLiterally ("/silent", "");
    EXPECT_EQ (askAndCancel ("/silent"), std::nullopt);
}

TEST_F (WebRequestTest, aServerThatStopsInItsHeaderCanBeLeft)
{
    server.answerLiterally ("/header", "HTTP/1.1 200 OK\r\nContent-");
    EXPECT_EQ (askAndCancel ("/header"), std::nullopt);
}

TEST_F (WebRequestTest, aServerThatStopsInItsTextCanBeLeft)
{
    server.answerLiterally ("/text", LocalWebServer::header (200, 100) + "1.0.9");
    EXPECT_EQ (askAndCancel ("/text"), std::nullopt);
}

TEST_F (WebRequestTest, whatIsCalledOffBeforehandIsNeverAsked)
{
    server.answer ("/text", "1.0.9");
    WebRequest request (juce::URL (server.host() + "/text"));
    request.cancel();
    EXPECT_EQ (request.read(), std::nullopt);
    EXPECT_EQ (server.requestsFor ("/text"), 0);
}
