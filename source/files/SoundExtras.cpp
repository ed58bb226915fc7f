#include "files/SoundExtras.h"

#include <cstdint>

namespace
{
/** As much of a broadcaster's history as is kept, in bytes. The library takes less than twice that. */
constexpr std::size_t historyLength = 8192;

using Broadcast = SF_BROADCAST_INFO_VAR (historyLength);
using Cart = SF_CART_INFO_VAR (historyLength);

/** The bytes that a command fills in; nothing where it says that there are none. */
std::vector<char> bytesFrom (SNDFILE* handle, int command, std::size_t size)
{
    std::vector<char> bytes (size);

    if (sf_command (handle, command, bytes.data(), static_cast<int> (size)) != SF_TRUE)
        bytes.clear();

    return bytes;
}

void give (SNDFILE* handle, int command, const std::vector<char>& bytes)
{
    if (bytes.empty())
        return;

    auto copy = bytes; // the library asks for something that it could change
    sf_command (handle, command, copy.data(), static_cast<int> (copy.size()));
}

std::vector<char> cuesOf (SNDFILE* handle)
{
    std::uint32_t count = 0;

    if (sf_command (handle, SFC_GET_CUE_COUNT, &count, sizeof (count)) != SF_TRUE || count == 0)
        return {};

    return bytesFrom (handle, SFC_GET_CUE, sizeof (count) + count * sizeof (SF_CUE_POINT));
}
} // namespace

SoundExtras SoundExtras::of (SNDFILE* handle)
{
    SoundExtras extras;

    for (int kind = SF_STR_FIRST; kind <= SF_STR_LAST; ++kind)
        if (const auto* text = sf_get_string (handle, kind); text != nullptr && *text != 0 && kind != SF_STR_SOFTWARE)
            extras.texts.push_back ({ kind, text });

    extras.broadcast = bytesFrom (handle, SFC_GET_BROADCAST_INFO, sizeof (Broadcast));
    extras.cart = bytesFrom (handle, SFC_GET_CART_INFO, sizeof (Cart));
    extras.cues = cuesOf (handle);

    if (SF_INSTRUMENT instrument {};
        sf_command (handle, SFC_GET_INSTRUMENT, &instrument, sizeof (instrument)) == SF_TRUE)
        extras.instrument = instrument;

    return extras;
}

void SoundExtras::storeIn (SNDFILE* handle) const
{
    for (const auto& [kind, text] : texts)
        sf_set_string (handle, kind, text.c_str());

    give (handle, SFC_SET_BROADCAST_INFO, broadcast);
    give (handle, SFC_SET_CART_INFO, cart);
    give (handle, SFC_SET_CUE, cues);

    if (instrument.has_value())
    {
        auto copy = *instrument;
        sf_command (handle, SFC_SET_INSTRUMENT, &copy, sizeof (copy));
    }
}
