#pragma once

/** What the live analysis takes of one core while audio plays: both of its threads and their waking, at 48 kHz in
    stereo, with the spectrum on. */
namespace AnalysisCost
{
/** Plays noise in blocks of 512 at the pace of a sound card for some seconds.
    @returns CPU time of the analysis threads over the time played, in percent, at the level that is set now */
[[nodiscard]] double percentOfCore (double seconds);
} // namespace AnalysisCost
