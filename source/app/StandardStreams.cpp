#include "app/StandardStreams.h"

#include "app/CommandError.h"
#include "app/Interrupt.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

void StandardStreams::openClosed()
{
    for (const auto stream : { STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO })
    {
        if (::fcntl (stream, F_GETFD) >= 0)
            continue;

        // The lowest number that is free is this one. The wrong direction makes every use fail.
        const auto opened = ::open ("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);

        if (opened >= 0 && opened != stream)
            ::close (opened);
    }
}

bool StandardStreams::isInput (const std::string& path) noexcept
{
    return path == "-" || path == "/dev/stdin" || path == "/dev/fd/0" || path == "/proc/self/fd/0";
}

bool StandardStreams::isOutput (const std::string& path) noexcept
{
    return path == "-" || path == "/dev/stdout" || path == "/dev/fd/1" || path == "/proc/self/fd/1";
}

void StandardStreams::requireNamedOnce (const std::vector<std::string>& inputs)
{
    if (const auto count = std::ranges::count_if (inputs, isInput); count > 1)
        throw CommandError (ExitCode::badArguments,
                            "The standard input can be read only once, and was named " + std::to_string (count)
                                + " times.");
}

void StandardStreams::waitFor (int descriptor, short event)
{
    std::array<pollfd, 2> ready { pollfd { descriptor, event, 0 }, pollfd { Interrupt::descriptor(), POLLIN, 0 } };

    do
        Interrupt::throwIfRequested();
    while (::poll (ready.data(), ready.size(), -1) < 0 && errno == EINTR);

    Interrupt::throwIfRequested();
}
