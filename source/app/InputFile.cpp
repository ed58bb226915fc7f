#include "app/InputFile.h"

#include "app/CommandError.h"
#include "app/FileArgument.h"
#include "app/Spool.h"
#include "files/FileInput.h"

#include <cerrno>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace
{
/** In bytes: settings, bands and targets take a thousandth of it. */
constexpr juce::int64 largestSmallFile = 64 << 20;

[[noreturn]] void refuse (const std::string& sentence)
{
    throw CommandError (ExitCode::unreadableInput, sentence);
}

Descriptor opened (const std::string& path, const std::string& name)
{
    auto file = Descriptor::toRead (fileFor (path));

    if (file.isOpen())
        return file;

    switch (const auto error = errno; error)
    {
        case ENOENT:
        case ENOTDIR:
            refuse ("There is no file " + name + ".");
        case EACCES:
        case EPERM:
            refuse (name + " may not be read by this user.");
        case ENXIO:
            refuse (name + " is a socket, not a file.");
        default:
            refuse (name + " cannot be read: " + std::generic_category().message (error) + ".");
    }
}
} // namespace

InputFile InputFile::open (const std::string& path)
{
    const auto name = "'" + path + "'";
    auto file = opened (path, name);
    struct stat status
    {
    };

    if (::fstat (file.number(), &status) != 0)
        refuse (name + " cannot be read.");

    switch (status.st_mode & S_IFMT)
    {
        case S_IFREG:
            return { std::move (file), false };
        case S_IFIFO:
            return { Spool::take (file.number(), name), true };
        case S_IFDIR:
            refuse (name + " is a folder, not a file.");
        default:
            refuse (name + (::isatty (file.number()) != 0 ? " is a terminal" : " is a device") + ", not a file.");
    }
}

std::string InputFile::read (const std::string& path)
{
    FileInput stream (open (path).file);
    juce::MemoryBlock bytes;
    stream.readIntoMemoryBlock (bytes, largestSmallFile + 1);

    if (bytes.getSize() > static_cast<std::size_t> (largestSmallFile))
        refuse ("'" + path + "' is far too large for what it should be.");

    if (! stream.isExhausted())
        refuse ("'" + path + "' cannot be read.");

    return { static_cast<const char*> (bytes.getData()), bytes.getSize() };
}
