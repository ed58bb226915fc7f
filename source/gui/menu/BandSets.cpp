#include "gui/menu/BandSets.h"

#include <array>

namespace
{
struct BandSet
{
    std::array<float, BandSets::largest> frequenciesHz;
};

constexpr std::array<BandSet, BandSets::largest> sets { {
    { { 1000.0f } },
    { { 1000.0f, 3000.0f } },
    { { 1000.0f, 3000.0f, 5000.0f } },
    { { 1000.0f, 3000.0f, 5000.0f, 10000.0f } },
    { { 1000.0f, 3000.0f, 5000.0f, 10000.0f, 15000.0f } },
    { { 500.0f, 1000.0f, 3000.0f, 5000.0f, 10000.0f, 15000.0f } },
    { { 500.0f, 1000.0f, 2000.0f, 3000.0f, 5000.0f, 10000.0f, 15000.0f } },
    { { 500.0f, 1000.0f, 2000.0f, 3000.0f, 4000.0f, 5000.0f, 10000.0f, 15000.0f } },
    { { 500.0f, 1000.0f, 2000.0f, 3000.0f, 4000.0f, 5000.0f, 10000.0f, 15000.0f, 17000.0f } },
    { { 500.0f, 1000.0f, 2000.0f, 3000.0f, 4000.0f, 5000.0f, 8000.0f, 10000.0f, 15000.0f, 17000.0f } },
} };
} // namespace

std::span<const float> BandSets::ofCount (int count) noexcept
{
    if (count < 1 || count > largest)
        return {};

    const auto index = static_cast<std::size_t> (count);
    return std::span (sets[index - 1].frequenciesHz).first (index);
}
