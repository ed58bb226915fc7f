#include "core/session/XmlGuard.h"

namespace
{
constexpr unsigned highestCodePoint = 0x10ffff;
constexpr int mostDigits = 8;
constexpr std::size_t longestEntityName = 32;

bool isSpace (char c) noexcept
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isDigit (char c) noexcept
{
    return c >= '0' && c <= '9';
}

bool isLetter (char c) noexcept
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/** Bytes that a byte of an attribute takes when it is written again: what is not plain becomes an escape. */
std::size_t writtenLength (char c) noexcept
{
    constexpr std::size_t longestEscape = 6;
    const auto isPlain = static_cast<unsigned char> (c) < 0x80 && c >= ' '
                         && std::string_view ("&<>\"'").find (c) == std::string_view::npos;
    return isPlain ? 1 : longestEscape;
}

bool isNameCharacter (char c) noexcept
{
    return isLetter (c) || isDigit (c) || c == '_' || c == '-' || c == ':' || c == '.';
}

/** The value of a hexadecimal digit, or -1. */
int hexValueOf (char c) noexcept
{
    if (isDigit (c))
        return c - '0';

    const auto lower = static_cast<char> (c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/** Length in bytes of the UTF-8 character that starts the text, 0 where none does: too long a form, half a surrogate
    pair, too high, or cut off. */
std::size_t characterLength (std::string_view text) noexcept
{
    const auto byteAt = [text] (std::size_t index) { return static_cast<unsigned char> (text[index]); };
    const auto first = byteAt (0);

    if (first < 0x80)
        return 1;

    const std::size_t length = first >= 0xf0 ? 4 : first >= 0xe0 ? 3 : 2;

    if (first < 0xc2 || first > 0xf4 || text.size() < length)
        return 0;

    for (std::size_t index = 1; index < length; ++index)
        if ((byteAt (index) & 0xc0) != 0x80)
            return 0;

    const auto second = byteAt (1);
    const auto isAllowed = (first != 0xe0 || second >= 0xa0) && (first != 0xed || second < 0xa0)
                           && (first != 0xf0 || second >= 0x90) && (first != 0xf4 || second < 0x90);
    return isAllowed ? length : 0;
}

bool isUtf8 (std::string_view text) noexcept
{
    while (! text.empty())
    {
        const auto length = characterLength (text);

        if (length == 0)
            return false;

        text.remove_prefix (length);
    }

    return true;
}

/** Walks over the text as the parser will. Every step tells whether to go on: false where the text ends, or where it is
    refused. */
class Scanner
{
public:
    explicit Scanner (std::string_view textToScan) noexcept : text (textToScan) {}

    /** Whether the root's end is reached. */
    bool reachesTheEnd() noexcept
    {
        while (scanMarkup())
            if (depth == 0 && rootSeen)
                return true;

        return false;
    }

private:
    [[nodiscard]] bool startsWith (std::string_view what) const noexcept
    {
        return text.substr (0, what.size()) == what;
    }

    /** Goes behind the next occurrence, or to the end of the text. */
    bool skipBehind (std::string_view what) noexcept
    {
        const auto found = text.find (what);

        if (found == std::string_view::npos)
            return false;

        text.remove_prefix (found + what.size());
        return true;
    }

    bool skipSpaces() noexcept
    {
        while (! text.empty() && isSpace (text.front()))
            text.remove_prefix (1);

        return ! text.empty();
    }

    /** What lies before the next mark, and the mark. */
    bool scanMarkup() noexcept
    {
        if (! scanText())
            return false;

        if (startsWith ("<!--"))
        {
            text.remove_prefix (4);
            return skipBehind ("-->");
        }

        if (depth == 0 && startsWith ("<?"))
        {
            text.remove_prefix (2);
            return skipBehind ("?>");
        }

        if (depth > 0 && startsWith ("</"))
        {
            --depth;
            return skipBehind (">");
        }

        if (depth > 0 && startsWith ("<![CDATA["))
            return skipBehind ("]]>");

        text.remove_prefix (1);
        return scanStartTag();
    }

    bool scanText() noexcept
    {
        while (! text.empty() && text.front() != '<')
        {
            if (depth == 0 && ! isSpace (text.front()))
                return false;

            if (! scanCharacter())
                return false;
        }

        return ! text.empty();
    }

    bool scanCharacter() noexcept
    {
        if (text.front() == '&')
            return scanEscape();

        text.remove_prefix (1);
        return true;
    }

    bool scanEscape() noexcept
    {
        text.remove_prefix (1);
        const auto isNumber = ! text.empty() && text.front() == '#';

        if (isNumber)
            text.remove_prefix (1);

        return isNumber ? scanNumber() : scanEntityName();
    }

    bool scanNumber() noexcept
    {
        const auto isHexadecimal = ! text.empty() && (text.front() == 'x' || text.front() == 'X');

        if (isHexadecimal)
            text.remove_prefix (1);

        auto value = 0u;

        for (int digits = 0; ! text.empty(); ++digits)
        {
            const auto c = text.front();
            text.remove_prefix (1);

            if (c == ';')
                return digits > 0 && value <= highestCodePoint;

            const auto digit = isHexadecimal ? hexValueOf (c) : isDigit (c) ? c - '0' : -1;

            if (digit < 0 || digits == mostDigits)
                return false;

            value = value * (isHexadecimal ? 16u : 10u) + static_cast<unsigned> (digit);
        }

        return false;
    }

    bool scanEntityName() noexcept
    {
        for (std::size_t length = 0; ! text.empty() && length <= longestEntityName; ++length)
        {
            const auto c = text.front();
            text.remove_prefix (1);

            if (c == ';')
                return length > 0;

            if (! isLetter (c) && ! isDigit (c))
                return false;
        }

        return false;
    }

    bool scanName() noexcept
    {
        std::size_t length = 0;

        while (length < text.size() && isNameCharacter (text[length]))
            ++length;

        text.remove_prefix (length);
        return length > 0 && ++names <= XmlGuard::mostNames;
    }

    /** A tag from its name to its end. */
    bool scanStartTag() noexcept
    {
        if (! scanName())
            return false;

        rootSeen = true;

        while (skipSpaces())
        {
            if (text.front() == '>')
            {
                text.remove_prefix (1);
                return ++depth <= XmlGuard::deepestNesting;
            }

            if (startsWith ("/>"))
            {
                text.remove_prefix (2);
                return true;
            }

            if (! scanAttribute())
                return false;
        }

        return false;
    }

    bool scanAttribute() noexcept
    {
        if (! scanName() || ! skipSpaces() || text.front() != '=')
            return false;

        text.remove_prefix (1);

        if (! skipSpaces())
            return false;

        const auto quote = text.front();

        if (quote != '"' && quote != '\'')
            return false;

        text.remove_prefix (1);
        std::size_t length = 0;

        while (! text.empty() && text.front() != quote)
        {
            length += writtenLength (text.front());

            if (text.front() == '<' || length > XmlGuard::longestAttribute)
                return false;

            if (! scanCharacter())
                return false;
        }

        if (text.empty())
            return false;

        text.remove_prefix (1);
        return true;
    }

    std::string_view text;
    int depth = 0;
    int names = 0;
    bool rootSeen = false;
};
} // namespace

bool XmlGuard::mayBeParsed (std::string_view text) noexcept
{
    return text.size() <= longestText && isUtf8 (text) && Scanner (text).reachesTheEnd();
}
