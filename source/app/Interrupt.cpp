#include "app/Interrupt.h"

#include "app/CommandError.h"

#include <atomic>
#include <csignal>

namespace
{
/** Without a lock, so that a handler may write it while files are rendered on several threads. */
std::atomic<bool> requested { false };
static_assert (std::atomic<bool>::is_always_lock_free);

void request (int)
{
    requested = true;
}

/** A signal that is ignored stays so: a program started with nohup outlives its terminal. */
void takeOver (int signal)
{
    if (std::signal (signal, request) == SIG_IGN)
        std::signal (signal, SIG_IGN);
}
} // namespace

void Interrupt::install()
{
    takeOver (SIGINT);
    takeOver (SIGTERM);

#if defined(SIGHUP)
    takeOver (SIGHUP);
#endif

#if defined(SIGXFSZ)
    // A file that meets the system's size limit is then a failed write, which is told, and not the end of the program.
    std::signal (SIGXFSZ, SIG_IGN);
#endif
}

void Interrupt::throwIfRequested()
{
    if (requested)
        throw CommandError (ExitCode::interrupted, "Interrupted; nothing was written.");
}
