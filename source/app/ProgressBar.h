#pragma once

#include <chrono>
#include <string>

/** A progress bar on the standard error stream, when that is a terminal; nothing otherwise. */
class ProgressBar
{
public:
    /** @param quiet shows nothing on a terminal either */
    explicit ProgressBar (const std::string& label, bool quiet = false);

    /** Wipes the bar, so that the next line stands alone. */
    ~ProgressBar();

    ProgressBar (const ProgressBar&) = delete;
    ProgressBar& operator= (const ProgressBar&) = delete;

    /** @param fraction 0 to 1 */
    void show (double fraction);

    /** Wipes the bar for something else to be printed, until it is shown again. */
    void clear();

private:
    const std::string label;
    const bool shown;
    std::chrono::steady_clock::time_point lastShown {};
};
