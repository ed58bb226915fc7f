#include "services/WebRequest.h"

#include "services/WebAddresses.h"

#include <array>

namespace
{
constexpr int firstSuccess = 200;
constexpr int firstBeyondSuccess = 300;
} // namespace

WebRequest::WebRequest (const juce::URL& address)
    : placeholder (WebAddresses::isPlaceholder (address)), stream (address, false)
{
}

bool WebRequest::answered()
{
    if (placeholder || cancelled || ! stream.connect (nullptr))
        return false;

    const auto status = stream.getStatusCode();
    return status >= firstSuccess && status < firstBeyondSuccess;
}

std::optional<juce::String> WebRequest::read()
{
    if (! answered())
        return std::nullopt;

    juce::MemoryOutputStream text;
    std::array<char, 16384> part {};

    for (;;)
    {
        const auto count = stream.read (part.data(), static_cast<int> (part.size()));

        if (cancelled || text.getDataSize() + static_cast<size_t> (std::max (count, 0)) > longestAnswer)
            return std::nullopt;

        if (count <= 0)
            break;

        text.write (part.data(), static_cast<size_t> (count));
    }

    return text.toUTF8();
}

void WebRequest::cancel()
{
    cancelled = true;
    stream.cancel();
}
