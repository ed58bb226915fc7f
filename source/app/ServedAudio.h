#pragma once

#include "app/AudioInput.h"

#include <string>

/** Throws CommandError unless the file has one of the six sample rates and one or two channels. */
void requireServedAudio (const AudioInput& input, const std::string& path);

/** Throws CommandError unless the file has one or two channels, and a rate that a file can have. */
void requireConvertibleAudio (const AudioInput& input, const std::string& path);
