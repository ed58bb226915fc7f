#include "BenchSignal.h"

#include <random>

BenchSignal::BenchSignal()
{
    std::mt19937 random (1);
    std::uniform_real_distribution<float> anyValue (-0.25f, 0.25f);

    for (auto& channel : samples)
        for (int frame = 0; frame < frameCount; ++frame)
            channel.push_back (anyValue (random));

    for (auto& channel : results)
        channel.resize (frameCount);
}
