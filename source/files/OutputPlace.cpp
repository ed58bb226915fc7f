#include "files/OutputPlace.h"

#include "files/FileInput.h"
#include "files/SoundStreams.h"
#include "files/SoundWriter.h"

#include <array>
#include <string_view>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

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

/** A target says in its first line what it is. */
bool isTarget (juce::InputStream& stream)
{
    constexpr std::string_view mark = "\"format\": \"solvane-target\"";
    std::array<char, 64> start {};
    const auto count = stream.read (start.data(), static_cast<int> (start.size()));
    return count > 0 && std::string_view (start.data(), static_cast<std::size_t> (count)).find (mark) != mark.npos;
}

bool isOfKind (juce::InputStream& stream, OutputPlace::Kind kind)
{
    switch (kind)
    {
        case OutputPlace::Kind::sound:
            return isSound (stream);
        case OutputPlace::Kind::picture:
            return isPicture (stream);
        case OutputPlace::Kind::target:
            return isTarget (stream);
    }

    return false;
}

const char* nameOf (OutputPlace::Kind kind)
{
    switch (kind)
    {
        case OutputPlace::Kind::sound:
            return "sound file";
        case OutputPlace::Kind::picture:
            return "PNG picture";
        case OutputPlace::Kind::target:
            return "target file";
    }

    return "";
}

/** How the sentence about what stands there goes on behind its name; nothing for what may be replaced. */
std::optional<std::string> objectionTo (const fs::path& place, OutputPlace::Kind kind)
{
    auto file = Descriptor::toRead (place);

    if (! file.isOpen())
        return "is there already, and may not be read by this user.";

    FileInput stream (std::move (file));

    if (stream.getTotalLength() == 0)
        return {};

    if (isOfKind (stream, kind))
        return {};

    return std::string ("is there already, and is no ") + nameOf (kind) + ". Remove it, or choose another name.";
}
} // namespace

fs::path OutputPlace::behindLinks (fs::path file)
{
    constexpr int longestChain = 40;
    std::error_code error;

    for (int step = 0; step < longestChain && fs::is_symlink (fs::symlink_status (file, error)); ++step)
    {
        const auto next = fs::read_symlink (file, error);

        if (error)
            break;

        // Where the system would go: `..` behind a linked folder leads up from what it stands for.
        const auto joined = file.parent_path() / next;
        const auto folder = fs::weakly_canonical (joined.parent_path(), error);
        file = error ? joined.lexically_normal() : folder / joined.filename();
    }

    return file;
}

bool OutputPlace::isSameFile (const fs::path& one, const fs::path& other)
{
    std::error_code error;
    return fs::equivalent (one, other, error);
}

std::optional<std::string> OutputPlace::refusal (const fs::path& givenPlace,
                                                 Kind kind,
                                                 const std::string& name,
                                                 const std::vector<fs::path>& spared)
{
    const auto quoted = "'" + name + "' ";
    std::error_code error;
    const auto status = fs::status (givenPlace, error);

    if (fs::is_directory (status))
        return quoted + "is a folder.";

    // A device or a pipe would be replaced by a file.
    if (fs::exists (status) && ! fs::is_regular_file (status))
        return quoted + "is not an ordinary file.";

    const auto place = behindLinks (givenPlace);

    if (! fs::is_directory (place.parent_path(), error))
    {
        const auto asTyped = fs::path (name).parent_path();
        const auto missing = place == givenPlace && ! asTyped.empty() ? asTyped : place.parent_path();
        return "There is no folder '" + missing.string() + "'.";
    }

    for (const auto& file : spared)
        if (isSameFile (place, file))
            return quoted + "is what is read; it would be lost.";

    if (! fs::exists (status))
        return {};

    if (::access (place.c_str(), W_OK) != 0)
        return quoted + "may not be written to by this user.";

    const auto objection = objectionTo (place, kind);
    return objection.has_value() ? std::optional (quoted + *objection) : std::nullopt;
}

bool OutputPlace::holdsForeignSound (const fs::path& place)
{
    std::error_code error;
    auto file = fs::is_regular_file (place, error) ? Descriptor::toRead (place) : Descriptor();

    if (! file.isOpen())
        return false;

    FileInput stream (std::move (file));
    SF_INFO info {};
    const auto handle = SoundStreams::openForReading (stream, info);

    if (handle == nullptr)
        return false;

    const auto* software = sf_get_string (handle.get(), SF_STR_SOFTWARE);
    return software == nullptr || ! std::string_view (software).starts_with (SoundWriter::mark);
}
