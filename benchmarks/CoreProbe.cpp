#include "CoreProbe.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace
{
/** Read and written, so that nothing can be computed in advance or left out. */
volatile std::uint64_t seed = 0x9e3779b97f4a7c15u;

template <std::size_t chainCount>
void run (int stepCount) noexcept
{
    const auto mask = seed;
    std::array<std::uint64_t, chainCount> values;

    for (auto& value : values)
        value = seed;

    for (int step = 0; step < stepCount; step += static_cast<int> (chainCount))
        for (auto& value : values)
            value = (value + mask) ^ mask;

    for (const auto value : values)
        seed = value;
}
} // namespace

void CoreProbe::runOneChain (int stepCount) noexcept
{
    run<1> (stepCount);
}

void CoreProbe::runEightChains (int stepCount) noexcept
{
    run<8> (stepCount);
}
