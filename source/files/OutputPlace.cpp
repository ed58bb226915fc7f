#include "files/OutputPlace.h"

#include "files/SoundStreams.h"

#include <array>
#include <cstring>
#include <filesystem>

namespace
{
namespace fs = std::filesystem;

fs::path pathOf (const juce::File& file)
{
    return file.getFullPathName().toStdString();
}

juce::String quoted (const juce::File& file)
{
    return "'" + file.getFullPathName() + "'";
}

bool isSound (juce::InputStream& stream)
{
    SF_INFO info {};
    return SoundStreams::openForReading (stream, info) != nullptr;
}

bool isPicture (juce::InputStream& stream)
{
    constexpr std::array<unsigned char, 8> signature { 0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n' };
    std::array<unsigned char, 8> start {};
    return stream.read (start.data(), static_cast<int> (start.size())) == static_cast<int> (start.size())
           && start == signature;
}

juce::Result checkWhatStandsThere (const juce::File& place, OutputPlace::Kind kind)
{
    juce::FileInputStream stream (place);

    if (! stream.openedOk())
        return juce::Result::fail (quoted (place) + " is there already, and may not be read by this user.");

    if (stream.getTotalLength() == 0)
        return juce::Result::ok();

    const auto isSoundWanted = kind == OutputPlace::Kind::sound;

    if (isSoundWanted ? isSound (stream) : isPicture (stream))
        return juce::Result::ok();

    return juce::Result::fail (quoted (place) + " is there already, and is no "
                               + (isSoundWanted ? "sound file" : "PNG picture")
                               + ". Remove it, or choose another name.");
}
} // namespace

juce::File OutputPlace::behindLinks (juce::File file)
{
    constexpr int longestChain = 40;

    for (int step = 0; step < longestChain && file.isSymbolicLink(); ++step)
    {
        const auto link = pathOf (file);
        std::error_code error;
        const auto next = fs::read_symlink (link, error);

        if (error)
            break;

        // Where the system would go: `..` behind a linked folder leads up from what it stands for.
        const auto joined = link.parent_path() / next;
        const auto folder = fs::weakly_canonical (joined.parent_path(), error);
        file = juce::File (
            juce::String::fromUTF8 ((error ? joined.lexically_normal() : folder / joined.filename()).c_str()));
    }

    return file;
}

bool OutputPlace::isSameFile (const juce::File& one, const juce::File& other)
{
    std::error_code error;
    return fs::equivalent (pathOf (one), pathOf (other), error);
}

juce::Result OutputPlace::check (const juce::File& givenPlace, Kind kind, const std::vector<juce::File>& spared)
{
    const auto place = behindLinks (givenPlace);

    if (place.isDirectory())
        return juce::Result::fail (quoted (place) + " is a folder.");

    if (! place.getParentDirectory().isDirectory())
        return juce::Result::fail ("There is no folder " + quoted (place.getParentDirectory()) + ".");

    for (const auto& file : spared)
        if (isSameFile (place, file))
            return juce::Result::fail (quoted (place) + " is what is read; it would be lost.");

    std::error_code error;
    const auto status = fs::status (pathOf (place), error);

    if (! fs::exists (status))
        return juce::Result::ok();

    // A device or a pipe would be replaced by a file.
    if (! fs::is_regular_file (status))
        return juce::Result::fail (quoted (place) + " is not an ordinary file.");

    if (! place.hasWriteAccess())
        return juce::Result::fail (quoted (place) + " may not be written to by this user.");

    return checkWhatStandsThere (place, kind);
}
