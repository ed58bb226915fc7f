#include "gui/editor/MakersNews.h"

#include "services/Product.h"
#include "services/UpdateCheck.h"

#include <system_error>

namespace
{
/** Runs a check on a thread of its own; on a system that has none left, nothing is asked. */
template <typename Check>
std::future<void> inBackground (Check check)
{
    try
    {
        return std::async (std::launch::async, std::move (check));
    }
    catch (const std::system_error&)
    {
        return {};
    }
}
} // namespace

MakersNews::MakersNews (InterfaceState& interfaceState, const WebHosts& webHosts, std::function<void()> onAnswer)
    : state (interfaceState), hosts (webHosts), tell (std::move (onAnswer))
{
}

MakersNews::~MakersNews()
{
    masterReference.clear();

    // Both first, so that they end side by side.
    for (auto* question : { updateQuestion.get(), newsQuestion.get() })
        if (question != nullptr)
            question->request.cancel();

    for (auto* question : { updateQuestion.get(), newsQuestion.get() })
        if (question != nullptr && question->end.valid())
            question->end.wait();
}

std::function<void (bool)> MakersNews::writeInto (std::atomic<bool>& result, std::atomic<bool>* answered)
{
    return [&result, answered, weak = juce::WeakReference<MakersNews> (this)] (bool found)
    {
        result = found;

        if (answered != nullptr)
            *answered = true;

        juce::MessageManager::callAsync (
            [weak]
            {
                if (auto* asker = weak.get())
                    asker->tell();
            });
    };
}

void MakersNews::askOnce()
{
    const auto asks = [] (std::atomic<bool>& started, const juce::URL& address)
    { return ! started.exchange (true) && ! WebAddresses::isPlaceholder (address); };

    if (const auto address = WebAddresses::newestVersion (hosts); asks (state.updateCheckStarted, address))
    {
        updateQuestion = std::make_unique<Question> (address);
        updateQuestion->end = inBackground (
            [question = updateQuestion.get(), done = writeInto (state.updateAvailable, &state.updateCheckAnswered)]
            { UpdateCheck::checkVersion (question->request, Product::version(), done); });
    }

    if (const auto address = WebAddresses::news (hosts); asks (state.newsCheckStarted, address))
    {
        newsQuestion = std::make_unique<Question> (address);
        newsQuestion->end =
            inBackground ([question = newsQuestion.get(), done = writeInto (state.newsAvailable, nullptr)]
                          { UpdateCheck::checkNews (question->request, done); });
    }
}
