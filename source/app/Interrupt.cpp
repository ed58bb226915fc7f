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
} // namespace

void Interrupt::install()
{
    std::signal (SIGINT, request);
    std::signal (SIGTERM, request);

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
