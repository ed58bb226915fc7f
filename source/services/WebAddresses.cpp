#include "services/WebAddresses.h"

const WebHosts& WebHosts::builtIn()
{
    static const WebHosts hosts { SOLVANE_WEB_HOST, SOLVANE_HELP_HOST, SOLVANE_DOWNLOAD_HOST };
    return hosts;
}

juce::URL WebAddresses::website (const WebHosts& hosts)
{
    return { hosts.web };
}

juce::URL WebAddresses::newestVersion (const WebHosts& hosts)
{
    return { hosts.web + "/solvane-version.html" };
}

juce::URL WebAddresses::news (const WebHosts& hosts)
{
    return { hosts.web + "/new-product.html" };
}

juce::URL WebAddresses::download (const WebHosts& hosts)
{
    return { hosts.download + "/zvq-installers/Brevlen_INSTALLER_WIN_ZVQ.zip" };
}

juce::URL WebAddresses::onlineGuide (const WebHosts& hosts)
{
    return { hosts.web + "/products/SOLVANE#howitworks" };
}

juce::URL WebAddresses::helpCentre (const WebHosts& hosts)
{
    return { hosts.help + "/hc/en-gb" };
}

juce::URL WebAddresses::userManual (const WebHosts& hosts)
{
    return { hosts.web + "/pages/solvane-manual" };
}

juce::URL WebAddresses::support (const WebHosts& hosts)
{
    return { hosts.help + "/hc/en-gb/requests/new" };
}

bool WebAddresses::isPlaceholder (const juce::URL& address)
{
    // A dot at the end of a host's name says that it is whole.
    const auto host = address.getDomain().trimCharactersAtEnd (".").toLowerCase();
    return host.isEmpty() || host == "example" || host.endsWith (".example");
}
