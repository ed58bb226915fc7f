#include "core/model/NotificationChannels.h"

#include <algorithm>

NotificationChannels::NotificationChannels() : list (std::make_unique<List>()) {}

int NotificationChannels::add (Callback callback, std::string channel)
{
    const std::lock_guard listGuard (listLock);
    const auto token = ++nextToken;

    auto changed = std::make_unique<List> (*list);
    changed->push_back ({ std::move (channel), std::move (callback), token });
    replaceList (std::move (changed));
    return token;
}

void NotificationChannels::remove (int token)
{
    const std::lock_guard listGuard (listLock);

    auto changed = std::make_unique<List> (*list);
    std::erase_if (*changed, [token] (const Entry& entry) { return entry.token == token; });
    replaceList (std::move (changed));
}

void NotificationChannels::replaceList (std::unique_ptr<List> changed)
{
    {
        const std::lock_guard notifyGuard (notifyLock);
        std::swap (list, changed);
    }

    // The old list is freed here, on the thread that changed it, when `changed` leaves its scope.
}

void NotificationChannels::fire (std::string_view channel) const
{
    const std::lock_guard notifyGuard (notifyLock);

    for (const auto& entry : *list)
        if (entry.channel == channel)
            entry.callback();
}

void NotificationChannels::waitForRunningNotification() const
{
    const std::lock_guard notifyGuard (notifyLock);
}
