#pragma once

/** Ctrl-C, a request to terminate and the end of the terminal, taken as a flag, so that a command can leave the place
   as it found it. */
namespace Interrupt
{
/** Takes the signals over. Once, at the start. */
void install();

/** Throws CommandError (interrupted) if a signal came. */
void throwIfRequested();
} // namespace Interrupt
