#pragma once

#include "app/CommandError.h"
#include "app/RenderTask.h"

#include <functional>
#include <optional>
#include <vector>

/** Renders many files, some of them at a time, with one progress bar.

    The calling thread owns all instances of the plug-in, makes and ends them, and prints; a thread each renders. */
class RenderPool
{
public:
    /** What became of one request: exactly one of the three. */
    struct Outcome
    {
        std::optional<RenderResult> result;
        std::optional<CommandError> error;

        /** It stands there already and was to be left alone. */
        bool skipped = false;
    };

    using Report = std::function<void (const RenderRequest& request, const Outcome& outcome)>;

    /** @param requests are kept by the caller; @param jobs how many at a time, from 1 on */
    RenderPool (const std::vector<RenderRequest>& requests, int jobs);

    /** Renders all. Calls `report` in the order of the requests, as soon as what comes before is done; what that throws
        ends the run, after the files under way. Throws CommandError after an interrupt. @param quiet no progress bar */
    void run (bool quiet, const Report& report);

private:
    const std::vector<RenderRequest>& requests;
    const int jobCount;
};
