#pragma once

#include "support/PluginRig.h"
#include "support/TemporaryFolder.h"

#include <string>
#include <vector>

/** A piece of recorded drums. */
[[nodiscard]] std::string recordedLoop();

/** Has sox make a file: `sox INPUT OPTIONS OUTPUT EFFECTS`. Throws where it fails. */
void convertWithSox (const std::string& input,
                     const std::string& options,
                     const std::string& output,
                     const std::string& effects = {});

/** Everything in a file as sox understands it, in whole numbers of so many bits: exact for files of whole numbers. */
[[nodiscard]] std::string wholeNumbersBySox (const std::string& file, int bits);

/** Has ffmpeg make a file: `ffmpeg -i INPUT OPTIONS OUTPUT`. Throws where it fails. */
void convertWithFfmpeg (const std::string& input, const std::string& options, const std::string& output);

/** Everything in a file as ffmpeg decodes it, with a decoder of its own choice unless one is named. */
[[nodiscard]] PluginRig::Signal
decodedByFfmpeg (const std::string& file, int channelCount, const std::string& decoder = {});

/** Stores floats to the bit. */
void writeFloatWav (const std::string& file, const PluginRig::Signal& signal, double sampleRate);

/** Reads a WAV of floats to the bit, by its data chunk. Throws where it is something else. */
[[nodiscard]] PluginRig::Signal readFloatWav (const std::string& file);

/** The bytes of a file. */
[[nodiscard]] std::string bytesOf (const std::string& file);
void writeBytes (const std::string& file, const std::string& bytes);
