#include "app/ProgressBar.h"

#include "app/Printable.h"

#include <algorithm>
#include <iostream>

#if defined(_WIN32)
    #include <io.h>
#else
    #include <unistd.h>
#endif

namespace
{
constexpr int barWidth = 40;
constexpr auto redrawInterval = std::chrono::milliseconds (50);

bool standardErrorIsTerminal()
{
#if defined(_WIN32)
    return _isatty (2) != 0;
#else
    return isatty (STDERR_FILENO) != 0;
#endif
}
} // namespace

ProgressBar::ProgressBar (const std::string& labelToUse, bool quiet)
    : label (printable (labelToUse)), shown (! quiet && standardErrorIsTerminal())
{
}

ProgressBar::~ProgressBar()
{
    clear();
}

void ProgressBar::clear()
{
    if (shown)
        std::cerr << "\r\033[K" << std::flush;

    lastShown = {};
}

void ProgressBar::show (double fraction)
{
    const auto now = std::chrono::steady_clock::now();

    if (! shown || (now - lastShown < redrawInterval && fraction < 1.0))
        return;

    lastShown = now;
    const auto filled = static_cast<int> (std::clamp (fraction, 0.0, 1.0) * barWidth);
    std::cerr << "\r\033[K" << label << " [" << std::string (static_cast<std::size_t> (filled), '=')
              << std::string (static_cast<std::size_t> (barWidth - filled), ' ') << "] "
              << static_cast<int> (fraction * 100.0) << " %" << std::flush;
}
