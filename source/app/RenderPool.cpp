#include "app/RenderPool.h"

#include "app/FileArgument.h"
#include "app/Interrupt.h"
#include "app/ProgressBar.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace
{
constexpr auto redrawInterval = std::chrono::milliseconds (50);

/** Tells the calling thread that a job has ended. */
class EndSignal
{
public:
    void raise()
    {
        {
            const std::lock_guard lock (mutex);
            raised = true;
        }
        condition.notify_one();
    }

    void waitAWhile()
    {
        std::unique_lock lock (mutex);
        condition.wait_for (lock, redrawInterval, [this] { return raised; });
        raised = false;
    }

private:
    std::mutex mutex;
    std::condition_variable condition;
    bool raised = false;
};

/** One file on its thread. Made and ended by the pool's thread. */
class Job
{
public:
    Job (std::size_t indexOfRequest, std::unique_ptr<RenderTask> taskToRun, EndSignal& signal)
        : index (indexOfRequest),
          task (std::move (taskToRun)),
          thread (
              [this, &signal]
              {
                  work();
                  ended.store (true, std::memory_order_release);
                  signal.raise();
              })
    {
    }

    ~Job() { thread.join(); }

    Job (const Job&) = delete;
    Job& operator= (const Job&) = delete;

    [[nodiscard]] bool hasEnded() const noexcept { return ended.load (std::memory_order_acquire); }
    [[nodiscard]] double progress() const noexcept { return task->progress(); }

    [[nodiscard]] RenderPool::Outcome outcome() const
    {
        RenderPool::Outcome result;

        if (error.has_value())
            result.error = error;
        else
            result.result = task->result();

        return result;
    }

    const std::size_t index;

private:
    void work()
    {
        try
        {
            task->run();
        }
        catch (const CommandError& failure)
        {
            error = failure;
        }
        catch (const std::exception& failure)
        {
            error = CommandError (ExitCode::failure, failure.what());
        }
    }

    const std::unique_ptr<RenderTask> task;
    std::optional<CommandError> error;
    std::atomic<bool> ended { false };
    std::thread thread;
};

bool isInterrupt (const std::optional<RenderPool::Outcome>& outcome)
{
    return outcome.has_value() && outcome->error.has_value() && outcome->error->code() == ExitCode::interrupted;
}
} // namespace

RenderPool::RenderPool (const std::vector<RenderRequest>& requestsToServe, int jobs)
    : requests (requestsToServe), jobCount (std::max (jobs, 1))
{
}

void RenderPool::run (bool quiet, const Report& report)
{
    EndSignal signal;
    std::vector<std::optional<Outcome>> outcomes (requests.size());
    std::vector<std::unique_ptr<Job>> jobs;
    std::size_t started = 0;
    std::size_t reported = 0;
    ProgressBar bar (requests.size() == 1 ? "Rendering" : "Rendering " + std::to_string (requests.size()) + " files",
                     quiet);

    // Of all files, with a part of one that is being listened to.
    const auto showProgress = [&] (double partOfOne)
    {
        auto done = partOfOne
                    + static_cast<double> (std::count_if (
                        outcomes.begin(), outcomes.end(), [] (const auto& outcome) { return outcome.has_value(); }));

        for (const auto& job : jobs)
            done += job->progress();

        bar.show (done / static_cast<double> (requests.size()));
    };

    const auto start = [&] (std::size_t index)
    {
        const auto& request = requests[index];

        try
        {
            Interrupt::throwIfRequested();

            if (request.existing == RenderRequest::Existing::skip && isThere (request.output))
                outcomes[index].emplace().skipped = true;
            else
                jobs.push_back (
                    std::make_unique<Job> (index, std::make_unique<RenderTask> (request, showProgress), signal));
        }
        catch (const CommandError& error)
        {
            outcomes[index].emplace().error = error;
        }
    };

    while (reported < requests.size())
    {
        std::erase_if (jobs,
                       [&] (const std::unique_ptr<Job>& job)
                       {
                           if (! job->hasEnded())
                               return false;

                           outcomes[job->index] = job->outcome();
                           return true;
                       });

        while (static_cast<int> (jobs.size()) < jobCount && started < requests.size())
            start (started++);

        for (; reported < requests.size() && outcomes[reported].has_value(); ++reported)
        {
            if (isInterrupt (outcomes[reported]))
                throw CommandError (ExitCode::interrupted,
                                    requests.size() == 1 ? "Interrupted; nothing was written."
                                                         : "Interrupted; " + std::to_string (reported) + " of "
                                                               + std::to_string (requests.size()) + " files are done.");

            bar.clear();
            report (requests[reported], *outcomes[reported]);
        }

        showProgress (0.0);

        if (! jobs.empty())
            signal.waitAWhile();
    }
}
