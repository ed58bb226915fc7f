#include "files/PromisedSize.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace
{
using Verdict = PromisedSize::Verdict;

constexpr juce::int64 page = 4096;

/** Who writes into a pipe does not know the size in advance, and writes one of these, less what rounding to whole
    frames took off and what else the file holds. */
bool standsForUnknown (juce::int64 size) noexcept
{
    constexpr std::array ends { juce::int64 { 1 } << 32, juce::int64 { 1 } << 31, juce::int64 { 0x7f000000 } };

    for (const auto end : ends)
        if (size >= end - page && size <= end + page)
            return true;

    return size > (juce::int64 { 1 } << 60);
}

class ChunkedFile
{
public:
    explicit ChunkedFile (juce::InputStream& streamToRead) : stream (streamToRead), length (stream.getTotalLength()) {}

    [[nodiscard]] PromisedSize look()
    {
        const auto magic = word (0);

        if (magic == "RIFF" || magic == "RF64")
            return judge (riff (false));

        if (magic == "RIFX")
            return judge (riff (true));

        if (magic == "riff")
            return judge (w64());

        if (magic == "FORM")
            return judge (aiff());

        if (magic == "caff")
            return judge (caf());

        return {};
    }

private:
    struct Samples
    {
        juce::int64 start = 0;
        juce::int64 size = 0;
    };

    [[nodiscard]] PromisedSize judge (const std::optional<Samples>& samples) const
    {
        // A header that ends before the samples begin has not kept its promise either.
        if (! samples.has_value())
            return { Verdict::broken };

        if (samples->size == 0)
            return { Verdict::nothing };

        const auto present = length - samples->start;

        if (samples->size < 0 || samples->size <= present)
            return {};

        return { standsForUnknown (samples->size) ? Verdict::open : Verdict::broken, samples->size, present };
    }

    [[nodiscard]] std::optional<Samples> riff (bool bigEndian)
    {
        juce::int64 size64 = -1;

        for (juce::int64 position = 12; position + 8 <= length;)
        {
            const auto name = word (position);
            const auto size = number32 (position + 4, bigEndian);

            if (name == "ds64")
                size64 = number64 (position + 16, false);

            if (name == "data")
                return Samples { position + 8, size == 0xffffffff && size64 >= 0 ? size64 : size };

            position += 8 + size + (size & 1);
        }

        return {};
    }

    [[nodiscard]] std::optional<Samples> w64()
    {
        constexpr juce::int64 header = 24;

        for (juce::int64 position = 40; position + header <= length;)
        {
            const auto size = number64 (position + 16, false);

            if (word (position) == "data")
                return Samples { position + header, size == 0 ? 0 : size - header };

            if (size < header || size > length)
                return {};

            position += (size + 7) / 8 * 8;
        }

        return {};
    }

    [[nodiscard]] std::optional<Samples> aiff()
    {
        constexpr juce::int64 offsetAndBlockSize = 8;
        const auto isPlain = word (8) == "AIFF"; // compressed ones count packets
        juce::int64 counted = 0;

        for (juce::int64 position = 12; position + 8 <= length;)
        {
            const auto size = number32 (position + 4, true);
            const auto content = position + 8;

            if (word (position) == "COMM" && isPlain)
                counted = number16 (content) * number32 (content + 2, true) * ((number16 (content + 6) + 7) / 8);

            if (word (position) == "SSND" && size >= offsetAndBlockSize)
                return Samples { content + offsetAndBlockSize, std::max (counted, size - offsetAndBlockSize) };

            position += 8 + size + (size & 1);
        }

        return {};
    }

    [[nodiscard]] std::optional<Samples> caf()
    {
        for (juce::int64 position = 8; position + 12 <= length;)
        {
            const auto size = number64 (position + 4, true);

            if (word (position) == "data")
                return Samples { position + 12, size };

            if (size < 0 || size > length)
                return {};

            position += 12 + size;
        }

        return {};
    }

    [[nodiscard]] std::string_view word (juce::int64 position)
    {
        letters.fill (0);
        stream.setPosition (position);
        stream.read (letters.data(), static_cast<int> (letters.size()));
        return { letters.data(), letters.size() };
    }

    [[nodiscard]] juce::int64 number16 (juce::int64 position)
    {
        stream.setPosition (position);
        return static_cast<juce::uint16> (stream.readShortBigEndian());
    }

    [[nodiscard]] juce::int64 number32 (juce::int64 position, bool bigEndian)
    {
        stream.setPosition (position);
        return static_cast<juce::uint32> (bigEndian ? stream.readIntBigEndian() : stream.readInt());
    }

    [[nodiscard]] juce::int64 number64 (juce::int64 position, bool bigEndian)
    {
        stream.setPosition (position);
        return bigEndian ? stream.readInt64BigEndian() : stream.readInt64();
    }

    juce::InputStream& stream;
    const juce::int64 length;
    std::array<char, 4> letters {};
};
} // namespace

PromisedSize PromisedSize::look (juce::InputStream& stream)
{
    return ChunkedFile (stream).look();
}
