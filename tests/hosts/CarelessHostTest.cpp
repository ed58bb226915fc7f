// What a host of the classic interface must not do, and some do: no call of it may end the host.
#include "hosts/HostRun.h"
#include "hosts/SharedLibrary.h"
#include "hosts/Vst2Host.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace
{
constexpr int frames = 512;
constexpr int switchOnOrOff = 12;

class CarelessHostTest : public testing::Test
{
protected:
    CarelessHostTest()
    {
        host.prepare (48000.0, frames);
        process();
    }

    void process (int count = frames) { host.processAsGiven (inputs, outputs, count); }

    [[nodiscard]] bool outputIsInput() const { return output == input; }
    [[nodiscard]] bool outputIs (float value) const
    {
        return output == hostRun::Signal (2, std::vector<float> (frames, value));
    }

    void fillOutput (float value)
    {
        output = hostRun::Signal (2, std::vector<float> (frames, value));
        setPointers();
    }

    void setPointers()
    {
        for (std::size_t channel = 0; channel < 2; ++channel)
        {
            inputs[channel] = input[channel].data();
            outputs[channel] = output[channel].data();
        }
    }

    Vst2Host host { libraryPathOf (PluginFormat::vst2) };
    hostRun::Signal input = signals::noise (2, frames, 51);
    hostRun::Signal output { 2, std::vector<float> (frames) };
    float* inputs[2] { input[0].data(), input[1].data() };
    float* outputs[2] { output[0].data(), output[1].data() };
};
} // namespace

TEST_F (CarelessHostTest, aBlockAfterSwitchingOffGoesThrough)
{
    host.suspend();
    fillOutput (9.0f);
    process();
    EXPECT_TRUE (outputIsInput());

    // Once it is on again, it delays again.
    host.prepare (48000.0, frames);
    fillOutput (9.0f);
    process();
    EXPECT_FALSE (outputIsInput());
    EXPECT_FALSE (outputIs (9.0f));
}

TEST_F (CarelessHostTest, noSamplesAndFewerThanNoneChangeNothing)
{
    fillOutput (9.0f);

    for (const auto count : { 0, -1, -1000000 })
        process (count);

    EXPECT_TRUE (outputIs (9.0f));
}

TEST_F (CarelessHostTest, whereNothingComesInNothingGoesOut)
{
    inputs[0] = nullptr;
    process();
    EXPECT_EQ (output[0], std::vector<float> (frames, 0.0f));
    EXPECT_EQ (output[1], input[1]);

    setPointers();
    outputs[1] = nullptr;
    process();
    host.processAsGiven (nullptr, outputs, frames);
    host.processAsGiven (inputs, nullptr, frames);
}

TEST_F (CarelessHostTest, callsWithoutTheirPointerAnswerNothing)
{
    for (auto opcode = 2; opcode < 80; ++opcode)
        if (opcode != switchOnOrOff)
            std::ignore = host.dispatch (opcode);

    for (const auto opcode : { 13, 23, 24, 33, 34, 42, 51, 69 })
        EXPECT_EQ (host.dispatch (opcode), 0) << opcode;

    process();
}

TEST_F (CarelessHostTest, switchingOffAndOnWhileABlockIsProcessedDoesNoHarm)
{
    std::atomic<bool> ended { false };
    std::thread audio (
        [&]
        {
            while (! ended)
                process();
        });

    for (auto turn = 0; turn < 200; ++turn)
        host.dispatch (switchOnOrOff, 0, turn % 2);

    ended = true;
    audio.join();
}

TEST_F (CarelessHostTest, withoutAHostThereIsNoInstance)
{
    const SharedLibrary library (libraryPathOf (PluginFormat::vst2));
    EXPECT_EQ (library.function<void* (*) (void*)> ("VSTPluginMain") (nullptr), nullptr);
}
