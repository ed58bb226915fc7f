#pragma once

#include "app/AudioInput.h"

#include <string>

/** Throws CommandError unless the file has one of the six sample rates and one or two channels. */
void requireServedAudio (const AudioInput& input, const std::string& path);
