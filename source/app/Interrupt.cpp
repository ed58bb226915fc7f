#include "app/Interrupt.h"

#include "app/CommandError.h"

#include <csignal>

namespace
{
volatile std::sig_atomic_t requested = 0;

void request (int)
{
    requested = 1;
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
    if (requested != 0)
        throw CommandError (ExitCode::interrupted, "Interrupted; nothing was written.");
}
