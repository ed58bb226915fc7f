#pragma once

#include <array>

/** The setting that every equaliser is measured with: ten bells over the product's range. */
struct BenchBand
{
    float frequencyHz;
    float gainDb;
    float q;
};

constexpr std::array<BenchBand, 10> tenBands { { { 400.0f, 3.0f, 1.0f },
                                                 { 640.0f, -2.5f, 1.2f },
                                                 { 1000.0f, 2.0f, 0.8f },
                                                 { 1600.0f, -3.0f, 1.4f },
                                                 { 2500.0f, 3.5f, 1.0f },
                                                 { 4000.0f, -2.0f, 1.3f },
                                                 { 6000.0f, 2.5f, 0.9f },
                                                 { 9000.0f, -3.5f, 1.0f },
                                                 { 12500.0f, 3.0f, 1.2f },
                                                 { 16000.0f, -2.0f, 0.7f } } };
