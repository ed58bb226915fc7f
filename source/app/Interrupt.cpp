#include "app/Interrupt.h"

#include "app/CommandError.h"
#include "files/Remnant.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <sys/eventfd.h>
#include <unistd.h>

namespace
{
/** Without a lock, so that a handler may write it while files are rendered on several threads. */
std::atomic<bool> requested { false };
static_assert (std::atomic<bool>::is_always_lock_free);

/** Written before the handler can run. */
int wakeUp = -1;

void request (int)
{
    if (requested.exchange (true))
    {
        Remnant::removeAll();
        ::_exit (static_cast<int> (ExitCode::interrupted));
    }

    const auto before = errno;
    constexpr std::uint64_t one = 1;
    [[maybe_unused]] const auto written = ::write (wakeUp, &one, sizeof (one));
    errno = before;
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
    wakeUp = ::eventfd (0, EFD_CLOEXEC | EFD_NONBLOCK);
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

bool Interrupt::isRequested() noexcept
{
    return requested;
}

void Interrupt::throwIfRequested()
{
    if (requested)
        throw CommandError (ExitCode::interrupted, "Interrupted; nothing was written.");
}

int Interrupt::descriptor() noexcept
{
    return wakeUp;
}
