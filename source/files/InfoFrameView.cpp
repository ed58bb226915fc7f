#include "files/InfoFrameView.h"

#include <string_view>

namespace
{
constexpr int headerLength = 4;

/** Bytes between a frame's header and its sound, which is where the frame says that it is one of information. */
int lengthOfSideInformation (bool isFirstVersion, bool isMono)
{
    if (isFirstVersion)
        return isMono ? 17 : 32;

    return isMono ? 9 : 17;
}
} // namespace

std::unique_ptr<InfoFrameView> InfoFrameView::of (juce::InputStream& stream, juce::int64 start)
{
    std::array<unsigned char, headerLength> header {};

    // Eleven bits that are set, and two for the third layer.
    if (! stream.setPosition (start) || stream.read (header.data(), headerLength) != headerLength || header[0] != 0xff
        || (header[1] & 0xe6) != 0xe2)
        return {};

    const auto side = lengthOfSideInformation ((header[1] & 0x18) == 0x18, (header[3] & 0xc0) == 0xc0);
    std::array<char, 4> word {};
    stream.setPosition (start + headerLength + side);
    stream.read (word.data(), static_cast<int> (word.size()));

    if (const std::string_view name (word.data(), word.size()); name != "Xing" && name != "Info")
        return {};

    constexpr int tellsFrames = 1;
    constexpr int tellsSize = 2;
    const auto flags = stream.readIntBigEndian();

    if ((flags & tellsSize) == 0)
        return {};

    const auto place = stream.getPosition() + ((flags & tellsFrames) != 0 ? 4 : 0);
    return std::unique_ptr<InfoFrameView> (new InfoFrameView (stream, place, stream.getTotalLength() - start));
}

InfoFrameView::InfoFrameView (juce::InputStream& stream, juce::int64 placeOfSize, juce::int64 size)
    : source (stream), place (placeOfSize)
{
    for (std::size_t index = 0; index < sizeBytes.size(); ++index)
        sizeBytes[index] = static_cast<unsigned char> (size >> (8 * (sizeBytes.size() - 1 - index)));
}

int InfoFrameView::read (void* destination, int byteCount)
{
    const auto before = source.getPosition();
    const auto count = source.read (destination, byteCount);

    for (std::size_t index = 0; index < sizeBytes.size(); ++index)
        if (const auto offset = place + static_cast<juce::int64> (index) - before; offset >= 0 && offset < count)
            static_cast<unsigned char*> (destination)[offset] = sizeBytes[index];

    return count;
}
