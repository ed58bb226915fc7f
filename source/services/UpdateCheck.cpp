#include "services/UpdateCheck.h"

#include <optional>

namespace
{
/** More digits than fit into 64 bits are no version. */
constexpr int mostDigits = 18;

std::optional<juce::int64> numberOf (const juce::String& version)
{
    const auto digits = version.removeCharacters (".").trim();

    if (digits.isEmpty() || digits.length() > mostDigits || ! digits.containsOnly ("0123456789"))
        return std::nullopt;

    return digits.getLargeIntValue();
}
} // namespace

void UpdateCheck::checkVersion (WebRequest& request, const juce::String& version, const Done& done)
{
    const auto answer = request.read();
    done (answer.has_value() && isNewer (*answer, version));
}

void UpdateCheck::checkNews (WebRequest& request, const Done& done)
{
    const auto answer = request.read();
    done (answer.has_value() && isNews (*answer));
}

bool UpdateCheck::isNewer (const juce::String& answer, const juce::String& version)
{
    const auto newest = numberOf (answer);
    const auto own = numberOf (version);
    return newest.has_value() && own.has_value() && *own < *newest;
}

bool UpdateCheck::isNews (const juce::String& answer)
{
    return answer == "True";
}
