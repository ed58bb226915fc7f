#include "services/UpdateCheck.h"

#include "support/LocalWebServer.h"

#include <gtest/gtest.h>

namespace
{
const juce::String ours ("1.0.8");

class UpdateCheckTest : public testing::Test
{
protected:
    LocalWebServer server;
    int callsOfDone = 0;
    bool result = false;

    [[nodiscard]] UpdateCheck::Done done()
    {
        return [this] (bool found)
        {
            ++callsOfDone;
            result = found;
        };
    }

    [[nodiscard]] bool findsUpdate (const juce::String& answer)
    {
        server.answer ("/version", answer);
        WebRequest request (juce::URL (server.host() + "/version"));
        UpdateCheck::checkVersion (request, ours, done());
        return result;
    }

    [[nodiscard]] bool findsNews (const juce::String& answer)
    {
        server.answer ("/news", answer);
        WebRequest request (juce::URL (server.host() + "/news"));
        UpdateCheck::checkNews (request, done());
        return result;
    }
};
} // namespace

TEST_F (UpdateCheckTest, aNewerVersionIsAnUpdate)
{
    EXPECT_TRUE (findsUpdate ("1.0.9"));
    EXPECT_TRUE (findsUpdate ("1.1.0"));
    EXPECT_TRUE (findsUpdate ("2.0.0\n"));
    EXPECT_EQ (callsOfDone, 3);
}

TEST_F (UpdateCheckTest, theSameOrAnOlderVersionIsNone)
{
    EXPECT_FALSE (findsUpdate ("1.0.8"));
    EXPECT_FALSE (findsUpdate ("1.0.8\r\n"));
    EXPECT_FALSE (findsUpdate ("1.0.7"));
    EXPECT_FALSE (findsUpdate ("0.9.9"));
    EXPECT_EQ (callsOfDone, 4);
}

TEST_F (UpdateCheckTest, versionsCompareAsNumbersWithoutTheirDots)
{
    EXPECT_TRUE (UpdateCheck::isNewer ("1.0.10", "1.1.0"));
    EXPECT_FALSE (UpdateCheck::isNewer ("1.1.0", "1.0.10"));
    EXPECT_FALSE (UpdateCheck::isNewer ("2.0", ours));
}

TEST_F (UpdateCheckTest, rubbishIsNoUpdate)
{
    for (const auto* rubbish : { "<html><body>1.0.9</body></html>",
                                 "404 page not found",
                                 "-109",
                                 "1,0,9",
                                 "True",
                                 "...",
                                 " ",
                                 "999999999999999999999999999999",
                                 "\xd9\xa1\xd9\xa0\xd9\xa9" })
        EXPECT_FALSE (findsUpdate (juce::String::fromUTF8 (rubbish))) << rubbish;

    EXPECT_FALSE (findsUpdate (juce::String::repeatedString ("9", 1 << 20)));
}

TEST_F (UpdateCheckTest, nothingAtAllIsNoUpdate)
{
    EXPECT_FALSE (findsUpdate (""));
    EXPECT_EQ (callsOfDone, 1);
}

TEST_F (UpdateCheckTest, aRefusalIsNoUpdateWhateverItSays)
{
    server.answerLiterally ("/version", LocalWebServer::header (404, 3) + "404");
    WebRequest request (juce::URL (server.host() + "/version"));
    UpdateCheck::checkVersion (request, ours, done());
    EXPECT_EQ (callsOfDone, 1);
    EXPECT_FALSE (result);
}

TEST_F (UpdateCheckTest, anUpdateIsFoundBehindARedirection)
{
    server.answer ("/elsewhere", "1.0.9");
    server.redirect ("/version", server.host() + "/elsewhere");
    WebRequest request (juce::URL (server.host() + "/version"));
    UpdateCheck::checkVersion (request, ours, done());
    EXPECT_TRUE (result);
}

TEST_F (UpdateCheckTest, onlyTheWordItselfAnnouncesNews)
{
    EXPECT_TRUE (findsNews ("True"));
    EXPECT_FALSE (findsNews ("True\n"));
    EXPECT_FALSE (findsNews ("True "));
    EXPECT_FALSE (findsNews (" True"));
    EXPECT_FALSE (findsNews ("true"));
    EXPECT_FALSE (findsNews ("False"));
    EXPECT_FALSE (findsNews (""));
    EXPECT_EQ (callsOfDone, 7);
}

TEST_F (UpdateCheckTest, whatIsCalledOffStillReports)
{
    WebRequest request (juce::URL (server.host() + "/version"));
    request.cancel();
    UpdateCheck::checkVersion (request, ours, done());
    EXPECT_EQ (callsOfDone, 1);
    EXPECT_FALSE (result);
}
