#pragma once

#include <chrono>
#include <string>

/** A progress bar on the standard error stream, when that is a terminal; nothing otherwise. */
class ProgressBar
{
public:
    explicit ProgressBar (std::string label);

    /** Wipes the bar, so that the next line stands alone. */
    ~ProgressBar();

    ProgressBar (const ProgressBar&) = delete;
    ProgressBar& operator= (const ProgressBar&) = delete;

    /** @param fraction 0 to 1 */
    void show (double fraction);

private:
    const std::string label;
    const bool onTerminal;
    std::chrono::steady_clock::time_point lastShown {};
};
