#pragma once

#include <string>
#include <vector>

/** Two channels of floats. */
struct Recording
{
    std::vector<float> left;
    std::vector<float> right;
};

/** Reads a recorded sample by name, without the ending, at any rate. Throws where it cannot be read. */
Recording readRecording (const std::string& name, int sampleRate);
