#include "InstanceCost.h"

#include "BenchSignal.h"
#include "Measurement.h"
#include "hosts/Vst2Host.h"

#include <unistd.h>

#include <chrono>
#include <fstream>
#include <memory>
#include <vector>

namespace
{
constexpr int instanceCount = 20;
constexpr int blockSize = 512;

double residentMegabytes()
{
    std::ifstream file ("/proc/self/statm");
    double total = 0.0;
    double resident = 0.0;
    file >> total >> resident;
    return resident * static_cast<double> (sysconf (_SC_PAGESIZE)) / (1024.0 * 1024.0);
}
} // namespace

InstanceCost InstanceCost::measure (const std::string& library)
{
    BenchSignal signal;
    std::vector<std::unique_ptr<Vst2Host>> hosts;
    std::vector<double> milliseconds;
    const float* input[] { signal.channel (0), signal.channel (1) };
    float* output[] { signal.output (0), signal.output (1) };

    const auto open = [&]
    {
        hosts.push_back (std::make_unique<Vst2Host> (library));
        hosts.back()->setChannelCount (2);
        hosts.back()->prepare (48000.0, blockSize);
        hosts.back()->process (input, output, 2, blockSize);
    };

    // The first one also loads the library.
    open();
    const auto before = residentMegabytes();

    for (int instance = 0; instance < instanceCount; ++instance)
    {
        const auto start = std::chrono::steady_clock::now();
        open();
        milliseconds.push_back (
            std::chrono::duration<double, std::milli> (std::chrono::steady_clock::now() - start).count());
    }

    return { Measurement::median (milliseconds), (residentMegabytes() - before) / instanceCount };
}
