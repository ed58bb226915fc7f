#pragma once

#include <juce_core/juce_core.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>

/** Damages blocks in the ways in which files, hosts and malice do: bits flip, bytes go, come, repeat and change places,
    the length lies, the end is missing, and pieces that mean something turn up where they should not. */
class BlockMutator
{
public:
    explicit BlockMutator (unsigned seed) : random (seed) {}

    [[nodiscard]] juce::MemoryBlock mutate (const juce::MemoryBlock& original)
    {
        std::string bytes (static_cast<const char*> (original.getData()), original.getSize());

        for (auto changes = 1 + below (3); changes > 0; --changes)
            change (bytes);

        if (below (4) > 0)
            mendLength (bytes);

        return { bytes.data(), bytes.size() };
    }

private:
    [[nodiscard]] std::size_t below (std::size_t limit) { return limit > 0 ? random() % limit : 0; }

    /** Most of what is added or lost would else show in the length alone. */
    static void mendLength (std::string& bytes)
    {
        constexpr std::size_t headerAndZero = 9;

        for (std::size_t index = 4; index < 8 && bytes.size() > headerAndZero; ++index)
            bytes[index] = static_cast<char> ((bytes.size() - headerAndZero) >> (8 * (index - 4)));
    }

    void change (std::string& bytes)
    {
        static constexpr std::array pieces { "nan",
                                             "-inf",
                                             "1e999",
                                             "-1",
                                             "99999999999999999999",
                                             "<settings/>",
                                             "</settings>",
                                             "<reference-track>",
                                             "<parameterStoreA>",
                                             "</ZVQ_Processor>",
                                             "<ZVQ_Processor>",
                                             "<!--",
                                             "-->",
                                             "<![CDATA[",
                                             "]]>",
                                             "<?",
                                             "?>",
                                             "&#x",
                                             "&lt;",
                                             "&#0;",
                                             "<!DOCTYPE a [<!ENTITY b \"c\">]>",
                                             "\xc0\xbc",
                                             "\xf0",
                                             "\"",
                                             "'",
                                             "/>",
                                             "=",
                                             "&",
                                             ";" };

        const auto position = below (bytes.size());
        const auto length = std::min (below (40), bytes.size() - position);

        switch (below (9))
        {
            case 0:
                if (! bytes.empty())
                    bytes[position] = static_cast<char> (bytes[position] ^ static_cast<char> (1 << below (8)));
                break;
            case 1:
                bytes.erase (position, length);
                break;
            case 2:
                bytes.insert (position, length, static_cast<char> (random()));
                break;
            case 3:
                bytes.insert (below (bytes.size()), bytes.substr (position, length * (1 + below (10))));
                break;
            case 4:
                bytes.resize (position);
                break;
            case 5:
                bytes.insert (position, pieces[below (pieces.size())]);
                break;
            case 6:
                bytes.replace (position, length, pieces[below (pieces.size())]);
                break;
            case 7:
                for (std::size_t index = 4; index < std::min<std::size_t> (8, bytes.size()); ++index)
                    bytes[index] = static_cast<char> (random());
                break;
            default:
                std::reverse (bytes.begin() + static_cast<std::ptrdiff_t> (position),
                              bytes.begin() + static_cast<std::ptrdiff_t> (position + length));
                break;
        }
    }

    std::mt19937 random;
};
