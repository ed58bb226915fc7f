#include "app/StandardStreams.h"

#include "app/CommandError.h"
#include "app/Interrupt.h"
#include "app/ProgressBar.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <poll.h>
#include <unistd.h>

namespace
{
constexpr std::size_t blockLength = 65536;

/** A file that may lose its name while it is open: the framework's own asks for the size by the name. */
class NamelessFile final : public juce::FileInputStream
{
public:
    explicit NamelessFile (const juce::File& place) : FileInputStream (place), length (place.getSize()) {}

    juce::int64 getTotalLength() override { return length; }

private:
    const juce::int64 length;
};

/** Waits until the descriptor is ready. Unlike a read or a write, this ends when a signal comes, so that Ctrl-C is
   heard while nothing else is. */
void waitFor (int descriptor, short event)
{
    pollfd ready { descriptor, event, 0 };

    do
        Interrupt::throwIfRequested();
    while (::poll (&ready, 1, -1) < 0 && errno == EINTR);
}

ssize_t readSome (std::array<char, blockLength>& block)
{
    waitFor (STDIN_FILENO, POLLIN);
    return ::read (STDIN_FILENO, block.data(), block.size());
}

bool writeAll (const char* data, std::size_t count)
{
    // What is ready takes as much as this without waiting.
    constexpr std::size_t largestPart = PIPE_BUF;

    while (count > 0)
    {
        waitFor (STDOUT_FILENO, POLLOUT);
        const auto written = ::write (STDOUT_FILENO, data, std::min (count, largestPart));

        if (written < 0)
            return false;

        data += written;
        count -= static_cast<std::size_t> (written);
    }

    return true;
}
} // namespace

StandardStreams::PrivateFolder::PrivateFolder()
{
    const auto parent = juce::File::getSpecialLocation (juce::File::tempDirectory).getFullPathName().toStdString();
    auto name = parent + "/solvane-XXXXXX";

    if (::mkdtemp (name.data()) == nullptr)
        throw CommandError (ExitCode::failure, "No temporary file can be made in '" + parent + "'.");

    folder = juce::File (juce::String::fromUTF8 (name.c_str()));
}

StandardStreams::PrivateFolder::~PrivateFolder()
{
    folder.deleteRecursively();
}

std::unique_ptr<juce::InputStream> StandardStreams::spoolInput()
{
    const PrivateFolder place;
    const auto file = place.file();
    ProgressBar progress ("Reading the standard input");
    progress.show (0.0);

    {
        juce::FileOutputStream spool (file);
        std::array<char, blockLength> block {};
        ssize_t count = 0;

        while (spool.openedOk() && (count = readSome (block)) > 0)
            if (! spool.write (block.data(), static_cast<std::size_t> (count)))
                break;

        spool.flush();

        if (count < 0)
            throw CommandError (ExitCode::unreadableInput, "The standard input cannot be read.");

        if (count > 0 || spool.getStatus().failed())
            throw CommandError (ExitCode::failure,
                                "There is no room for the standard input in '"
                                    + file.getParentDirectory().getFullPathName().toStdString() + "'.");
    }

    // The file loses its name with the folder, and lives on for as long as it is open.
    auto stream = std::make_unique<NamelessFile> (file);

    if (stream->failedToOpen())
        throw CommandError (ExitCode::unreadableInput, "The standard input cannot be read.");

    return stream;
}

void StandardStreams::moveToOutput (const juce::File& file)
{
    NamelessFile stream (file);

    // A reader who goes away ends this program at once.
    file.deleteFile();
    std::array<char, blockLength> block {};

    for (auto remaining = stream.getTotalLength(); remaining > 0;)
    {
        const auto count = stream.read (block.data(), static_cast<int> (block.size()));

        if (count <= 0 || ! writeAll (block.data(), static_cast<std::size_t> (count)))
            throw CommandError (ExitCode::unwritableOutput, "The standard output could not be written to.");

        remaining -= count;
    }
}
