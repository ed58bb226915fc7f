#include "MovingNoise.h"

#include <cmath>
#include <random>

std::vector<float> movingNoise (unsigned seed, std::size_t count, double sampleRate)
{
    std::mt19937 random (seed);
    std::uniform_real_distribution<float> samples (-0.35f, 0.35f);
    std::uniform_real_distribution<float> levelsDb (-50.0f, 0.0f);
    std::vector<float> result (count);
    const auto stepLength = static_cast<std::size_t> (sampleRate / 5.0);
    auto gain = 1.0f;

    for (std::size_t index = 0; index < count; ++index)
    {
        if (index % stepLength == 0)
            gain = std::pow (10.0f, levelsDb (random) / 20.0f);

        result[index] = gain * samples (random);
    }

    return result;
}
