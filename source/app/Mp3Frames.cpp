#include "app/Mp3Frames.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

namespace
{
using Bytes = std::span<const unsigned char>;

constexpr std::size_t headerLength = 4;
constexpr std::size_t longestFrame = 1441;
constexpr std::size_t oldTagLength = 128;
constexpr std::size_t apeHeaderLength = 32;

/** Encoders disagree on whether the frame that holds the count is counted. */
constexpr std::size_t countTolerance = 2;

bool beginsWith (Bytes bytes, std::string_view text) noexcept
{
    return bytes.size() >= text.size()
           && std::equal (text.begin(),
                          text.end(),
                          bytes.begin(),
                          [] (char a, unsigned char b) { return a == static_cast<char> (b); });
}

std::size_t bigEndian (Bytes bytes) noexcept
{
    return juce::ByteOrder::bigEndianInt (bytes.data());
}

struct Header
{
    std::size_t length = 0;
    int sampleCount = 0;
    int sampleRate = 0;
    std::size_t sideInfoLength = 0;
};

/** The header that the bytes begin with, if it is one of layer III with a bit rate that is stated. */
std::optional<Header> headerOf (Bytes bytes) noexcept
{
    constexpr std::array fullRates { 44100, 48000, 32000 };
    constexpr std::array kilobits { 0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320 };
    constexpr std::array halfKilobits { 0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160 };

    if (bytes.size() < headerLength || bytes[0] != 0xff || (bytes[1] & 0xe0) != 0xe0)
        return {};

    const auto version = (bytes[1] >> 3) & 3; // 3: full rates, 2: half, 0: a quarter
    const auto layer = (bytes[1] >> 1) & 3;
    const auto rateIndex = static_cast<std::size_t> ((bytes[2] >> 2) & 3);
    const auto bitRateIndex = static_cast<std::size_t> (bytes[2] >> 4);

    if (version == 1 || layer != 1 || rateIndex == 3 || bitRateIndex == 0 || bitRateIndex == 15)
        return {};

    const auto isFull = version == 3;
    const auto isMono = (bytes[3] >> 6) == 3;
    Header header;
    header.sampleRate = fullRates[rateIndex] / (isFull ? 1 : version == 2 ? 2 : 4);
    header.sampleCount = isFull ? 1152 : 576;
    header.sideInfoLength = isFull ? (isMono ? 17 : 32) : (isMono ? 9 : 17);
    const auto bitRate = 1000 * (isFull ? kilobits[bitRateIndex] : halfKilobits[bitRateIndex]);
    const auto padding = (bytes[2] >> 1) & 1;
    header.length = static_cast<std::size_t> (header.sampleCount / 8 * bitRate / header.sampleRate + padding);
    return header;
}

/** The number of frames that a frame states in place of sound; nothing for a frame of sound. */
std::optional<std::size_t> statedCountOf (Bytes frame, const Header& header) noexcept
{
    constexpr std::size_t hasCount = 1;
    constexpr std::size_t otherPlace = headerLength + 32;
    const auto place = headerLength + header.sideInfoLength;

    if (frame.size() >= place + 12)
        if (const auto tag = frame.subspan (place); beginsWith (tag, "Xing") || beginsWith (tag, "Info"))
            return (bigEndian (tag.subspan (4)) & hasCount) != 0 ? bigEndian (tag.subspan (8)) : 0;

    if (frame.size() >= otherPlace + 18)
        if (const auto tag = frame.subspan (otherPlace); beginsWith (tag, "VBRI"))
            return bigEndian (tag.subspan (14));

    return {};
}

/** Length of a tag that the bytes begin with, or 0. */
std::size_t tagLengthOf (Bytes bytes) noexcept
{
    if (bytes.size() >= static_cast<std::size_t> (Mp3Frames::tagHeaderLength))
        if (const auto length = Mp3Frames::tagLength (bytes.data()); length > 0)
            return static_cast<std::size_t> (length);

    if (beginsWith (bytes, "TAG") && bytes.size() == oldTagLength)
        return oldTagLength;

    if (beginsWith (bytes, "APETAGEX") && bytes.size() >= apeHeaderLength)
        return apeHeaderLength + juce::ByteOrder::littleEndianInt (bytes.data() + 12);

    return 0;
}

class Walk
{
public:
    explicit Walk (const juce::MemoryBlock& content) noexcept
        : all (static_cast<const unsigned char*> (content.getData()), content.getSize())
    {
    }

    std::optional<Mp3Frames> run()
    {
        while (position < all.size())
            if (! skipTag() && ! takeFrame())
                skipOther();

        if (frameCount == 0)
            return {};

        result.sampleCount = static_cast<juce::int64> (frameCount) * first->sampleCount;
        result.isWhole &= frameCount + countTolerance >= statedCount;
        return std::move (result);
    }

private:
    [[nodiscard]] Bytes rest() const noexcept { return all.subspan (position); }

    bool skipTag() noexcept
    {
        const auto length = tagLengthOf (rest());
        position += std::min (length, all.size() - position);
        return length > 0;
    }

    [[nodiscard]] bool isOfThisFile (const Header& header) const noexcept
    {
        return ! first.has_value() || header.sampleRate == first->sampleRate;
    }

    /** Two bytes can look like a header anywhere: one that follows no frame counts if another follows it. */
    [[nodiscard]] bool isBelievable (const Header& header) const noexcept
    {
        if (! isOfThisFile (header) || header.length < headerLength || header.length > rest().size())
            return false;

        if (skipped == 0 && first.has_value())
            return true;

        const auto behind = rest().subspan (header.length);
        const auto next = headerOf (behind);
        return behind.empty() || tagLengthOf (behind) > 0
               || (next.has_value() && next->sampleRate == header.sampleRate);
    }

    bool takeFrame()
    {
        const auto header = headerOf (rest());

        if (! header.has_value() || ! isBelievable (*header))
            return false;

        const auto frame = rest().first (header->length);

        if (frameCount > 0 && skipped > longestFrame)
            result.isWhole = false;

        first = first.value_or (*header);
        skipped = 0;
        position += frame.size();

        if (const auto count = statedCountOf (frame, *header))
        {
            statedCount += *count;
            return true;
        }

        result.frames.append (frame.data(), frame.size());
        ++frameCount;
        return true;
    }

    void skipOther() noexcept
    {
        ++position;
        ++skipped;
    }

    const Bytes all;
    std::size_t position = 0;

    /** Bytes since the last frame that are neither frame nor tag. */
    std::size_t skipped = 0;
    std::size_t frameCount = 0;
    std::size_t statedCount = 0;
    std::optional<Header> first;
    Mp3Frames result;
};
} // namespace

juce::int64 Mp3Frames::tagLength (const unsigned char* start) noexcept
{
    constexpr auto hasFooter = 0x10;

    if (! beginsWith (Bytes (start, static_cast<std::size_t> (tagHeaderLength)), "ID3"))
        return 0;

    // Seven bits of each byte.
    juce::int64 length = 0;

    for (int index = 6; index < tagHeaderLength; ++index)
        length = length * 128 + (start[index] & 0x7f);

    return length + tagHeaderLength + ((start[5] & hasFooter) != 0 ? tagHeaderLength : 0);
}

std::optional<Mp3Frames> Mp3Frames::find (const juce::MemoryBlock& content)
{
    return Walk (content).run();
}
