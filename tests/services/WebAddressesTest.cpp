#include "services/WebAddresses.h"

#include <gtest/gtest.h>

namespace
{
const WebHosts ours { "https://www.maker.test", "https://help.maker.test", "https://files.maker.test" };

juce::String whole (const juce::URL& address)
{
    return address.toString (true);
}
} // namespace

TEST (WebAddressesTest, everyAddressIsAHostAndAPath)
{
    EXPECT_EQ (whole (WebAddresses::website (ours)), "https://www.maker.test");
    EXPECT_EQ (whole (WebAddresses::newestVersion (ours)), "https://www.maker.test/solvane-version.html");
    EXPECT_EQ (whole (WebAddresses::news (ours)), "https://www.maker.test/new-product.html");
    EXPECT_EQ (whole (WebAddresses::download (ours)),
               "https://files.maker.test/zvq-installers/Brevlen_INSTALLER_WIN_ZVQ.zip");
    EXPECT_EQ (whole (WebAddresses::onlineGuide (ours)), "https://www.maker.test/products/SOLVANE#howitworks");
    EXPECT_EQ (whole (WebAddresses::helpCentre (ours)), "https://help.maker.test/hc/en-gb");
    EXPECT_EQ (whole (WebAddresses::userManual (ours)), "https://www.maker.test/pages/solvane-manual");
    EXPECT_EQ (whole (WebAddresses::support (ours)), "https://help.maker.test/hc/en-gb/requests/new");
}

TEST (WebAddressesTest, aHostThatEndsInExampleIsAPlaceholder)
{
    for (const auto* address : { "https://www.solvane.example",
                                 "http://www.solvane.example/news.html",
                                 "https://example/x",
                                 "https://WWW.SOLVANE.EXAMPLE/x",
                                 "https://www.solvane.example./x",
                                 "https://www.solvane.example:8080/x",
                                 "" })
        EXPECT_TRUE (WebAddresses::isPlaceholder (juce::URL (address))) << address;

    for (const auto* address :
         { "https://www.solvane.test", "http://127.0.0.1:8000/example", "https://notexample/x", "https://example.org" })
        EXPECT_FALSE (WebAddresses::isPlaceholder (juce::URL (address))) << address;
}

TEST (WebAddressesTest, aBuildKnowsThreeHosts)
{
    for (const auto& host : { WebHosts::builtIn().web, WebHosts::builtIn().help, WebHosts::builtIn().download })
    {
        EXPECT_TRUE (host.startsWith ("https://")) << host;
        EXPECT_FALSE (host.endsWithChar ('/')) << host;
    }
}
