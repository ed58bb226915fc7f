#pragma once

/** Ctrl-C, a request to terminate and the end of the terminal, taken as a flag, so that a command can leave the place
    as it found it. A second one ends the program at once, whatever it waits for; no unfinished file stays then either.
 */
namespace Interrupt
{
/** Takes the signals over. Once, at the start. */
void install();

/** Whether a signal came. Any thread. */
[[nodiscard]] bool isRequested() noexcept;

/** Throws CommandError (interrupted) if a signal came. */
void throwIfRequested();

/** A descriptor that becomes readable with the first signal, for who waits for another one, on any thread; below 0
    before install(). */
[[nodiscard]] int descriptor() noexcept;
} // namespace Interrupt
