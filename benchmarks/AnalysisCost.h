#pragma once

/** What the live analysis takes of one core while audio plays at 48 kHz in stereo, with the spectrum on, in percent at
    the vector level that is set now. */
struct AnalysisCost
{
    /** What both threads compute, called one chunk after the other. */
    double work = 0.0;

    /** CPU time of both threads while noise plays in blocks of 512 at the pace of a sound card: each pass is woken and
        finds the caches as the rest of the machine has left them. */
    double atPace = 0.0;

    /** The same with two threads that wake and await each other in the same way and do nothing: what the machine itself
        asks for waking them. */
    double waking = 0.0;

    /** @param seconds how long each of the last two is watched */
    [[nodiscard]] static AnalysisCost measure (double seconds);
};
