#include "OwnEqualiser.h"

#include "TenBands.h"

using Kind = Settings::Parameter;

std::string OwnEqualiser::nameOf (Layout layout)
{
    switch (layout)
    {
        case Layout::mono:
            return "mono";
        case Layout::stereo:
            return "stereo";
        case Layout::midSide:
            return "mid/side";
        case Layout::both:
            return "both";
    }

    return {};
}

OwnEqualiser::OwnEqualiser (const Setup& setup, int blockSizeToUse)
    : channelCount (setup.layout == Layout::mono ? 1 : 2), blockSize (blockSizeToUse), block (channelCount, blockSize)
{
    rig.prepare (setup.sampleRate, blockSize, channelCount);
    rig.set (ParameterIds::mode, setup.mode == FilterMode::mix ? 1.0f : 0.0f);
    rig.set (ParameterIds::phase, setup.phase == FilterPhase::linear ? 1.0f : 0.0f);
    rig.settle();
    setBands (setup.layout);
    rig.settle();
}

void OwnEqualiser::setBands (Layout layout)
{
    for (int band = 0; band < bandCount; ++band)
    {
        const auto& values = tenBands[static_cast<std::size_t> (band)];
        const auto midOrSide = band % 2 == 0 ? 0.0f : 1.0f;
        const auto isStereo = layout == Layout::stereo || (layout == Layout::both && band < bandCount / 2);

        if (layout != Layout::mono)
            rig.set (band, Kind::midSide, isStereo ? 0.5f : midOrSide);

        rig.setBand (band, values.frequencyHz, values.gainDb, values.q);
    }
}

void OwnEqualiser::process (const BenchSignal& signal)
{
    for (int start = 0; start < BenchSignal::frameCount; start += blockSize)
    {
        // A wrapper copies the host's input to the place where the processor works.
        for (int channel = 0; channel < channelCount; ++channel)
            block.copyFrom (channel, 0, signal.channel (channel) + start, blockSize);

        rig.processor.processBlock (block, noMidi);
    }
}
