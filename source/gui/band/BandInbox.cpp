#include "gui/band/BandInbox.h"

#include "core/parameters/ParameterTable.h"

#include <algorithm>

BandInbox::BandInbox (int band, std::function<void (Kind, float)> taker) : take (std::move (taker))
{
    for (std::size_t index = 0; index < kinds.size(); ++index)
        ids[index] = ParameterIds::ofBand (band, kinds[index]);
}

int BandInbox::indexOf (const juce::String& parameterId) const noexcept
{
    const auto found = std::find (ids.begin(), ids.end(), parameterId);
    return found != ids.end() ? static_cast<int> (found - ids.begin()) : -1;
}

void BandInbox::post (int index, float value)
{
    values[static_cast<std::size_t> (index)].store (value, std::memory_order_relaxed);

    if (waiting.fetch_or (1u << index, std::memory_order_release) != 0)
        return;

    juce::MessageManager::callAsync (
        [target = self]
        {
            if (target != nullptr)
                target->serve();
        });
}

void BandInbox::serve()
{
    const juce::WeakReference<BandInbox> alive (this);
    const auto taken = waiting.exchange (0, std::memory_order_acquire);

    for (std::size_t index = 0; index < kinds.size() && alive != nullptr; ++index)
        if ((taken & (1u << index)) != 0)
            take (kinds[index], values[index].load (std::memory_order_relaxed));
}
