#include "files/Remnant.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace
{
/** More than can be under way at a time. */
constexpr std::size_t slotCount = 1024;

/** Whoever takes a name out of here owns it, so that the handler never reads one that is being given back. */
std::array<std::atomic<char*>, slotCount> slots {};
static_assert (std::atomic<char*>::is_always_lock_free);
} // namespace

Remnant::Remnant (const std::filesystem::path& place)
{
    auto* const name = ::strdup (place.c_str());

    for (auto& each : slots)
        if (char* nothing = nullptr; each.compare_exchange_strong (nothing, name))
        {
            slot = &each;
            return;
        }

    std::free (name);
}

Remnant::~Remnant()
{
    if (slot != nullptr)
        std::free (slot->exchange (nullptr));
}

void Remnant::removeAll() noexcept
{
    for (auto& each : slots)
        if (auto* const name = each.exchange (nullptr); name != nullptr)
        {
            ::unlink (name);

            // A handler of signals may not free it, so its owner does; an empty name is nobody's file.
            *name = '\0';
            each.store (name);
        }
}
