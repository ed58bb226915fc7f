#include "files/SoundEncoding.h"

#include <sndfile.h>

#include <algorithm>
#include <array>
#include <cctype>

namespace
{
using Container = SoundEncoding::Container;
using Width = SoundEncoding::Width;

struct ContainerRow
{
    Container container;
    int libraryFormat;
    const char* word;
    const char* text;
};

/** Vorbis and Opus share the library's number and differ in what stands for the width. */
constexpr std::array containers {
    ContainerRow { Container::wav, SF_FORMAT_WAV, "wav", "WAV" },
    ContainerRow { Container::rf64, SF_FORMAT_RF64, "rf64", "RF64" },
    ContainerRow { Container::w64, SF_FORMAT_W64, "w64", "W64" },
    ContainerRow { Container::aiff, SF_FORMAT_AIFF, "aiff", "AIFF" },
    ContainerRow { Container::caf, SF_FORMAT_CAF, "caf", "CAF" },
    ContainerRow { Container::flac, SF_FORMAT_FLAC, "flac", "FLAC" },
    ContainerRow { Container::vorbis, SF_FORMAT_OGG | SF_FORMAT_VORBIS, "ogg", "Ogg Vorbis" },
    ContainerRow { Container::opus, SF_FORMAT_OGG | SF_FORMAT_OPUS, "opus", "Opus" },
    ContainerRow { Container::mp3, SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, "mp3", "MP3" },
};

struct WidthRow
{
    Width width;
    int libraryFormat;
    int bits;
    const char* word;
    const char* text;
};

constexpr std::array widths {
    WidthRow { Width::bits8, SF_FORMAT_PCM_S8, 8, "8", "8 bits" },
    WidthRow { Width::bits16, SF_FORMAT_PCM_16, 16, "16", "16 bits" },
    WidthRow { Width::bits24, SF_FORMAT_PCM_24, 24, "24", "24 bits" },
    WidthRow { Width::bits32, SF_FORMAT_PCM_32, 32, "32", "32 bits" },
    WidthRow { Width::floats, SF_FORMAT_FLOAT, 0, "float", "32 bits floating point" },
    WidthRow { Width::doubles, SF_FORMAT_DOUBLE, 0, "double", "64 bits floating point" },
};

struct EndingRow
{
    const char* ending;
    Container container;
};

constexpr std::array endingRows {
    EndingRow { "wav", Container::wav },    EndingRow { "wave", Container::wav },
    EndingRow { "rf64", Container::rf64 },  EndingRow { "w64", Container::w64 },
    EndingRow { "aif", Container::aiff },   EndingRow { "aiff", Container::aiff },
    EndingRow { "aifc", Container::aiff },  EndingRow { "caf", Container::caf },
    EndingRow { "flac", Container::flac },  EndingRow { "ogg", Container::vorbis },
    EndingRow { "oga", Container::vorbis }, EndingRow { "opus", Container::opus },
    EndingRow { "mp3", Container::mp3 },
};

const ContainerRow& rowOf (Container container)
{
    return *std::find_if (
        containers.begin(), containers.end(), [=] (const auto& row) { return row.container == container; });
}

/** Not for lossy. */
const WidthRow& rowOf (Width width)
{
    return *std::find_if (widths.begin(), widths.end(), [=] (const auto& row) { return row.width == width; });
}

bool isLossy (Container container) noexcept
{
    return container == Container::vorbis || container == Container::opus || container == Container::mp3;
}

std::string lowerCase (std::string text)
{
    std::transform (
        text.begin(), text.end(), text.begin(), [] (unsigned char letter) { return char (std::tolower (letter)); });
    return text;
}

/** The first that can be written. */
SoundEncoding firstWritable (Container container, std::initializer_list<Width> wanted)
{
    for (const auto width : wanted)
        if (const SoundEncoding encoding { container, width }; encoding.isWritable())
            return encoding;

    return { container, Width::lossy };
}
} // namespace

int SoundEncoding::wholeNumberBits() const noexcept
{
    return width == Width::lossy ? 0 : rowOf (width).bits;
}

std::string SoundEncoding::description() const
{
    const std::string text = rowOf (container).text;
    return width == Width::lossy ? text : text + ", " + rowOf (width).text;
}

std::string SoundEncoding::name() const
{
    const std::string word = rowOf (container).word;
    return width == Width::lossy ? word : word + '-' + rowOf (width).word;
}

bool SoundEncoding::isWritable() const
{
    if (isLossy (container) != (width == Width::lossy))
        return false;

    // At a rate that every container has.
    SF_INFO info {};
    info.samplerate = 48000;
    info.channels = 2;
    info.format = libraryFormat();
    return sf_format_check (&info) != 0;
}

SoundEncoding SoundEncoding::nearest (Container container, Width wanted)
{
    switch (wanted)
    {
        case Width::bits8:
            return firstWritable (container, { Width::bits8, Width::bits16 });
        case Width::bits16:
            return firstWritable (container, { Width::bits16 });
        case Width::bits24:
            return firstWritable (container, { Width::bits24 });
        case Width::bits32:
            return firstWritable (container, { Width::bits32, Width::bits24 });
        case Width::floats:
            return firstWritable (container, { Width::floats, Width::bits24 });
        case Width::doubles:
            return firstWritable (container, { Width::doubles, Width::bits24 });
        case Width::lossy:
            break;
    }

    return container == Container::aiff ? SoundEncoding { container, Width::bits24 }
                                        : firstWritable (container, { Width::floats, Width::bits24 });
}

std::optional<SoundEncoding> SoundEncoding::fromName (const std::string& name)
{
    const auto wanted = lowerCase (name);

    for (const auto& candidate : all())
        if (candidate.name() == wanted)
            return candidate;

    return {};
}

std::vector<SoundEncoding> SoundEncoding::all()
{
    std::vector<SoundEncoding> encodings;

    for (const auto& container : containers)
    {
        if (isLossy (container.container))
            encodings.push_back ({ container.container, Width::lossy });

        for (const auto& width : widths)
            if (const SoundEncoding encoding { container.container, width.width }; encoding.isWritable())
                encodings.push_back (encoding);
    }

    return encodings;
}

std::optional<Container> SoundEncoding::containerByEnding (const std::string& ending)
{
    const auto wanted = lowerCase (ending);

    for (const auto& row : endingRows)
        if (wanted == row.ending)
            return row.container;

    return {};
}

std::string SoundEncoding::containerName (Container container)
{
    return rowOf (container).text;
}

std::vector<std::string> SoundEncoding::endings()
{
    std::vector<std::string> list;

    for (const auto& row : endingRows)
        list.emplace_back (row.ending);

    return list;
}

int SoundEncoding::libraryFormat() const noexcept
{
    const auto major = rowOf (container).libraryFormat;

    if (width == Width::lossy)
        return major;

    // Eight bits have no sign in the one family, and one in the others.
    const auto isMicrosofts =
        container == Container::wav || container == Container::rf64 || container == Container::w64;
    return major | (width == Width::bits8 && isMicrosofts ? SF_FORMAT_PCM_U8 : rowOf (width).libraryFormat);
}

std::optional<SoundEncoding> SoundEncoding::fromLibraryFormat (int format) noexcept
{
    auto major = format & SF_FORMAT_TYPEMASK;
    const auto minor = format & SF_FORMAT_SUBMASK;

    if (major == SF_FORMAT_WAVEX)
        major = SF_FORMAT_WAV;

    for (const auto& row : containers)
    {
        if ((row.libraryFormat & SF_FORMAT_TYPEMASK) != major)
            continue;

        // The other layers of MPEG are decoded by the same library in the same way.
        if (isLossy (row.container))
        {
            if (major == SF_FORMAT_MPEG || (row.libraryFormat & SF_FORMAT_SUBMASK) == minor)
                return SoundEncoding { row.container, Width::lossy };

            continue;
        }

        for (const auto& width : widths)
            if (minor == width.libraryFormat || (minor == SF_FORMAT_PCM_U8 && width.width == Width::bits8))
                return SoundEncoding { row.container, width.width };

        if (minor == SF_FORMAT_ALAC_24 || minor == SF_FORMAT_ALAC_20)
            return SoundEncoding { row.container, Width::bits24 };

        return SoundEncoding { row.container, minor == SF_FORMAT_ALAC_32 ? Width::bits32 : Width::bits16 };
    }

    return {};
}
