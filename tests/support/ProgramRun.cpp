#include "support/ProgramRun.h"

#include <array>
#include <csignal>
#include <poll.h>
#include <pty.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
constexpr int exitCodeOfFailedStart = 127;

std::vector<char*> pointersTo (std::vector<std::string>& words)
{
    std::vector<char*> pointers;

    for (auto& word : words)
        pointers.push_back (word.data());

    pointers.push_back (nullptr);
    return pointers;
}

std::vector<std::string> commandOf (const std::string& program, const std::vector<std::string>& arguments)
{
    std::vector<std::string> words { program };
    words.insert (words.end(), arguments.begin(), arguments.end());
    return words;
}

/** Reads what is there now; false at the end. A terminal whose program has gone reports an error, which is its end. */
bool take (int descriptor, std::string& text)
{
    std::array<char, 4096> part {};
    const auto count = ::read (descriptor, part.data(), part.size());

    if (count <= 0)
        return false;

    text.append (part.data(), static_cast<std::size_t> (count));
    return true;
}

int exitCodeOf (pid_t child)
{
    int status = 0;
    ::waitpid (child, &status, 0);
    const auto code = WIFEXITED (status) ? WEXITSTATUS (status) : -1;

    if (code == exitCodeOfFailedStart)
        throw std::runtime_error ("the program could not be started");

    return code;
}

struct Pipe
{
    Pipe()
    {
        if (::pipe (ends.data()) != 0)
            throw std::runtime_error ("no pipe");
    }

    std::array<int, 2> ends {};
};
} // namespace

ProgramRun runProgram (const std::string& program,
                       const std::vector<std::string>& arguments,
                       const ProgramSurroundings& surroundings)
{
    auto words = commandOf (program, arguments);
    const auto pointers = pointersTo (words);
    const Pipe output;
    const Pipe errors;
    const auto child = ::fork();

    if (child < 0)
        throw std::runtime_error ("no process");

    if (child == 0)
    {
        ::dup2 (output.ends[1], STDOUT_FILENO);
        ::dup2 (errors.ends[1], STDERR_FILENO);

        for (const auto descriptor : { output.ends[0], output.ends[1], errors.ends[0], errors.ends[1] })
            ::close (descriptor);

        if (! surroundings.folder.empty() && ::chdir (surroundings.folder.c_str()) != 0)
            ::_exit (exitCodeOfFailedStart);

        if (surroundings.largestFileBytes.has_value())
        {
            const rlimit limit { *surroundings.largestFileBytes, *surroundings.largestFileBytes };
            ::setrlimit (RLIMIT_FSIZE, &limit);

#if defined(__SANITIZE_THREAD__)
            // The sanitizer writes before the program can say that it lives with this.
            std::signal (SIGXFSZ, SIG_IGN);
#endif
        }

        if (surroundings.largestMemoryBytes.has_value())
        {
            const rlimit limit { *surroundings.largestMemoryBytes, *surroundings.largestMemoryBytes };
            ::setrlimit (RLIMIT_DATA, &limit);
        }

        ::execv (pointers[0], pointers.data());
        ::_exit (exitCodeOfFailedStart);
    }

    ::close (output.ends[1]);
    ::close (errors.ends[1]);

    ProgramRun run;
    std::array<pollfd, 2> sources { pollfd { output.ends[0], POLLIN, 0 }, pollfd { errors.ends[0], POLLIN, 0 } };
    const std::array texts { &run.output, &run.errors };

    for (std::size_t open = sources.size(); open > 0;)
    {
        ::poll (sources.data(), sources.size(), -1);

        for (std::size_t index = 0; index < sources.size(); ++index)
        {
            if (sources[index].revents == 0 || take (sources[index].fd, *texts[index]))
                continue;

            ::close (sources[index].fd);
            sources[index].fd = -1;
            --open;
        }
    }

    run.exitCode = exitCodeOf (child);
    return run;
}

ProgramRun runOnTerminal (const std::string& program,
                          const std::vector<std::string>& arguments,
                          const std::function<bool (const std::string& text)>& wantsInterrupt)
{
    auto words = commandOf (program, arguments);
    const auto pointers = pointersTo (words);
    int terminal = -1;
    const auto child = ::forkpty (&terminal, nullptr, nullptr, nullptr);

    if (child < 0)
        throw std::runtime_error ("no terminal");

    if (child == 0)
    {
        ::execv (pointers[0], pointers.data());
        ::_exit (exitCodeOfFailedStart);
    }

    ProgramRun run;
    constexpr char controlC = 3;

    for (auto pressed = false; take (terminal, run.output);)
        if (! pressed && wantsInterrupt (run.output))
            pressed = ::write (terminal, &controlC, 1) == 1;

    ::close (terminal);
    run.exitCode = exitCodeOf (child);
    return run;
}
