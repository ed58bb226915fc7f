#include "SessionCost.h"

#include "Measurement.h"
#include "support/SessionRig.h"

#include <chrono>

namespace
{
double millisecondsOf (auto body)
{
    const auto start = std::chrono::steady_clock::now();
    body();
    return std::chrono::duration<double, std::milli> (std::chrono::steady_clock::now() - start).count();
}
} // namespace

SessionCost SessionCost::measure()
{
    PluginRig rig;
    rig.prepare (48000.0, 512);
    sessions::fillSession (rig);

    std::vector<double> saving;
    std::vector<double> loading;
    juce::MemoryBlock block;

    for (int round = 0; round < 101; ++round)
    {
        saving.push_back (millisecondsOf ([&] { block = sessions::save (rig.processor); }));
        rig.processor.sessionState().removeReferenceTracks(); // those of a session join the ones that are there
        loading.push_back (millisecondsOf ([&] { sessions::load (rig.processor, block); }));
    }

    return { Measurement::median (saving), Measurement::median (loading), static_cast<int> (block.getSize()) };
}
