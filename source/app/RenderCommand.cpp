#include "app/RenderCommand.h"

#include "app/CommandError.h"
#include "app/FileArgument.h"
#include "app/OutputFolder.h"
#include "app/PictureFile.h"
#include "app/Printable.h"
#include "app/RenderPicture.h"
#include "app/RenderPool.h"
#include "app/RenderReport.h"
#include "app/StandardStreams.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <optional>
#include <thread>

namespace
{
constexpr auto moreHelp = " 'solvane render --help' says more.";

/** The standard input is there for one file, and for one reading of it. */
void requireInputsCanBeRead (const RenderCommand& command)
{
    auto inputs = command.common.references;

    if (! command.folder.empty() && std::ranges::any_of (inputs, StandardStreams::isInput))
        throw CommandError (ExitCode::badArguments,
                            "With --into a reference is a file, and not the standard input, which can be read only "
                            "once.");

    inputs.push_back (command.files.front());
    StandardStreams::requireNamedOnce (inputs);
}

/** Looks before anything is rendered. */
void requireReportMayStand (const std::string& report, const RenderRequest& request)
{
    auto read = request.references;
    read.push_back (request.input);
    PictureFile::requireItMayStand (report, "--report", read);

    // Neither need be there yet.
    std::error_code error;
    const auto placeOf = [&error] (const std::string& path)
    { return std::filesystem::weakly_canonical (fileFor (path), error); };

    if (! StandardStreams::isOutput (request.output) && placeOf (report) == placeOf (request.output))
        throw CommandError (ExitCode::badArguments, "'" + report + "' cannot be the result and the report.");
}

/** Prints each result in its turn, and keeps the count of what failed. */
class Printer
{
public:
    Printer (bool asJson, bool isQuiet, bool isAlone) : json (asJson), quiet (isQuiet), alone (isAlone) {}

    void skip (const RenderRequest& request)
    {
        list.push_back ({ { "input", request.input }, { "output", request.output }, { "skipped", true } });

        if (! json && ! quiet)
            std::cout << "Kept:   " << printable (request.output) << " is there already\n";
    }

    void show (const RenderResult& result)
    {
        if (json)
            list.push_back (RenderReport::toJson (result));
        else if (! quiet)
            RenderReport::print (result);

        if (! quiet)
            for (const auto& note : result.notes)
                std::cerr << "Note: " << printable ((alone ? "" : result.input + ": ") + note) << '\n';
    }

    void show (const RenderRequest& request, const CommandError& error)
    {
        ++failed;
        list.push_back ({ { "input", request.input }, { "output", request.output }, { "error", error.what() } });
        std::cerr << "solvane: " << printable (error.what()) << '\n';
    }

    void finish() const
    {
        if (json)
            // A name that is not UTF-8 cannot stand in JSON.
            std::cout << list.dump (1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
    }

    [[nodiscard]] std::size_t failedCount() const noexcept { return failed; }

private:
    const bool json;
    const bool quiet;
    const bool alone;
    nlohmann::json list = nlohmann::json::array();
    std::size_t failed = 0;
};
} // namespace

std::vector<RenderRequest> RenderCommand::requests() const
{
    if (! folder.empty())
    {
        auto all = OutputFolder::requestsFor (files, folder, common);

        // Before the first of them is written.
        for (const auto& request : all)
            request.requireReferencesStay();

        return all;
    }

    if (files.size() < 2)
        throw CommandError (ExitCode::badArguments, std::string ("OUT is required.") + moreHelp);

    if (files.size() > 2)
        throw CommandError (ExitCode::badArguments,
                            "The following argument was not expected: " + files[2]
                                + ". Several files need --into FOLDER." + moreHelp);

    auto request = common;
    request.input = files[0];
    request.output = files[1];
    return { request };
}

void RenderCommand::run() const
{
    requireInputsCanBeRead (*this);
    const auto all = requests();
    const auto alone = folder.empty();
    std::optional<StandardStreams::PrintToErrors> outputIsSound;

    if (alone && StandardStreams::isOutput (all.front().output))
        outputIsSound.emplace();

    if (! report.empty())
        requireReportMayStand (report, all.front());

    const auto cores = static_cast<int> (std::max (1u, std::thread::hardware_concurrency()));
    Printer printer (json, quiet, alone);
    std::optional<RenderResult> last;

    RenderPool pool (all, jobs > 0 ? jobs : cores);
    pool.run (quiet,
              [&] (const RenderRequest& request, const RenderPool::Outcome& outcome)
              {
                  if (outcome.skipped)
                      printer.skip (request);
                  else if (outcome.error.has_value() && alone)
                      throw CommandError (*outcome.error);
                  else if (outcome.error.has_value())
                      printer.show (request, *outcome.error);
                  else
                  {
                      printer.show (*outcome.result);
                      last = *outcome.result;
                  }
              });

    printer.finish();

    if (! report.empty() && last.has_value())
        drawRendering (*last, report);

    if (printer.failedCount() > 0)
        throw CommandError (ExitCode::failure,
                            std::to_string (printer.failedCount()) + " of " + std::to_string (all.size())
                                + " files could not be rendered.");
}
