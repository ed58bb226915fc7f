#include "app/Printable.h"

#include <array>

namespace
{
struct Character
{
    char32_t code = 0;

    /** Bytes; 0 where they are no character. */
    std::size_t length = 0;
};

/** The character that a text begins with, if it is written in the shortest form and one that may be written. */
Character firstOf (std::string_view text)
{
    constexpr std::array<char32_t, 5> smallest { 0, 0, 0x80, 0x800, 0x10000 };
    const auto first = static_cast<unsigned char> (text.front());

    if (first < 0x80)
        return { first, 1 };

    const std::size_t length = first >= 0xf0 && first < 0xf8 ? 4 : first >= 0xe0 ? 3 : first >= 0xc0 ? 2 : 0;

    if (length == 0 || length > text.size() || first >= 0xf8)
        return {};

    auto code = static_cast<char32_t> (first & (0xff >> (length + 1)));

    for (const auto next : text.substr (1, length - 1))
    {
        const auto byte = static_cast<unsigned char> (next);

        if ((byte & 0xc0) != 0x80)
            return {};

        code = (code << 6) | (byte & 0x3f);
    }

    const auto mayBe = code >= smallest[length] && code <= 0x10ffff && (code < 0xd800 || code > 0xdfff);
    return mayBe ? Character { code, length } : Character {};
}

/** Control characters of both sets, line separators, and what turns the direction of writing. */
bool steers (char32_t code)
{
    return code < 0x20 || (code >= 0x7f && code < 0xa0) || code == 0x2028 || code == 0x2029
           || (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);
}

void appendBytes (std::string& result, std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";

    for (const auto each : bytes)
    {
        const auto byte = static_cast<unsigned char> (each);
        result += "\\x";
        result += digits[byte >> 4];
        result += digits[byte & 0xf];
    }
}
} // namespace

std::string printable (std::string_view text)
{
    std::string result;

    while (! text.empty())
    {
        const auto [code, length] = firstOf (text);
        const auto part = text.substr (0, length == 0 ? 1 : length);

        if (length == 0 || steers (code))
            appendBytes (result, part);
        else
            result += part;

        text.remove_prefix (part.size());
    }

    return result;
}
