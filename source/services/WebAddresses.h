#pragma once

#include <juce_core/juce_core.h>

/** The maker's web hosts, each as "https://name" without a slash at its end. */
struct WebHosts
{
    juce::String web, help, download;

    /** Those that this build was configured with. */
    [[nodiscard]] static const WebHosts& builtIn();
};

/** Every address that the product knows, by what it is for. */
namespace WebAddresses
{
[[nodiscard]] juce::URL website (const WebHosts& hosts);
[[nodiscard]] juce::URL newestVersion (const WebHosts& hosts);
[[nodiscard]] juce::URL news (const WebHosts& hosts);
[[nodiscard]] juce::URL download (const WebHosts& hosts);
[[nodiscard]] juce::URL onlineGuide (const WebHosts& hosts);
[[nodiscard]] juce::URL helpCentre (const WebHosts& hosts);
[[nodiscard]] juce::URL userManual (const WebHosts& hosts);
[[nodiscard]] juce::URL support (const WebHosts& hosts);

/** Whether an address stands for none: its host is missing, or ends in ".example", which is reserved and never answers.
    Nothing asks there, not even for the name. */
[[nodiscard]] bool isPlaceholder (const juce::URL& address);
} // namespace WebAddresses
