#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <vector>

/** Runs functions in processes forked from this one, for limits and rights that would hold for the whole process. A
    child reports by its function's result alone, and leaves without clean-up. */
class ChildProcesses
{
public:
    ChildProcesses() = default;
    ~ChildProcesses() { allSucceeded(); }

    ChildProcesses (const ChildProcesses&) = delete;
    ChildProcesses& operator= (const ChildProcesses&) = delete;

    void start (const std::function<bool()>& work)
    {
        const auto id = ::fork();

        if (id == 0)
            ::_exit (work() ? 0 : 1);

        ids.push_back (id);
    }

    /** Whether any child still runs. */
    [[nodiscard]] bool anyRuns() const
    {
        for (const auto id : ids)
        {
            siginfo_t state {};

            if (::waitid (P_PID, static_cast<id_t> (id), &state, WEXITED | WNOHANG | WNOWAIT) == 0 && state.si_pid == 0)
                return true;
        }

        return false;
    }

    /** Waits for all children. @returns whether each function gave true */
    bool allSucceeded()
    {
        auto result = true;

        for (const auto id : ids)
        {
            auto status = 0;
            result = ::waitpid (id, &status, 0) == id && WIFEXITED (status) && WEXITSTATUS (status) == 0 && result;
        }

        ids.clear();
        return result;
    }

private:
    std::vector<pid_t> ids;
};

/** The result of one function in a process of its own. */
inline bool succeedsInChildProcess (const std::function<bool()>& work)
{
    ChildProcesses children;
    children.start (work);
    return children.allSucceeded();
}
