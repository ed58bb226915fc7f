#include "window/PictureStrip.h"

#include <algorithm>
#include <stdexcept>

namespace
{
constexpr int gap = 4;

Picture blackPicture (int width, int height)
{
    return { width, height, std::vector<std::uint32_t> (static_cast<std::size_t> (width * height)) };
}

std::uint32_t& pixelAt (Picture& picture, int x, int y)
{
    return picture.pixels[static_cast<std::size_t> (y * picture.width + x)];
}
} // namespace

Picture PictureStrip::halved (const Picture& picture)
{
    auto half = blackPicture (picture.width / 2, picture.height / 2);

    for (int y = 0; y < half.height; ++y)
        for (int x = 0; x < half.width; ++x)
            for (const auto shift : { 16, 8, 0 })
            {
                auto sum = 0u;

                for (const auto dy : { 0, 1 })
                    for (const auto dx : { 0, 1 })
                        sum += (picture.at (2 * x + dx, 2 * y + dy) >> shift) & 0xffu;

                pixelAt (half, x, y) |= (sum / 4) << shift;
            }

    return half;
}

Picture PictureStrip::of (const std::vector<Picture>& frames, int framesPerRow)
{
    const auto count = static_cast<int> (frames.size());
    const auto columns = std::min (count, framesPerRow);
    const auto rows = (count + framesPerRow - 1) / framesPerRow;
    const auto& first = frames.at (0);
    auto strip = blackPicture (columns * (first.width + gap) - gap, rows * (first.height + gap) - gap);

    for (int index = 0; index < count; ++index)
    {
        const auto& frame = frames[static_cast<std::size_t> (index)];

        if (frame.width != first.width || frame.height != first.height)
            throw std::invalid_argument ("frames of two sizes");

        const auto left = index % framesPerRow * (first.width + gap);
        const auto top = index / framesPerRow * (first.height + gap);

        for (int y = 0; y < frame.height; ++y)
            for (int x = 0; x < frame.width; ++x)
                pixelAt (strip, left + x, top + y) = frame.at (x, y);
    }

    return strip;
}

std::vector<Picture> PictureStrip::spread (const std::vector<Picture>& frames, int count)
{
    std::vector<Picture> chosen;
    const auto last = static_cast<int> (frames.size()) - 1;

    for (int index = 0; index < count; ++index)
        chosen.push_back (frames.at (static_cast<std::size_t> ((index * last + (count - 1) / 2) / (count - 1))));

    return chosen;
}
