#pragma once

#include "support/SoundFiles.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/** Sound files of every kind, sound and unsound, for everything that reads them. */
namespace FileZoo
{
using Maker = std::function<void (const TemporaryFolder& folder, const std::string& path)>;

/** A kind of file, how it is made, and what is to become of it. */
struct Specimen
{
    std::string name;
    std::string what;
    Maker make;

    /** How far its levels may be from those of `like`, in dB, where it is read. */
    double tolerance = 0.0;
    int exitCode = 0;
    std::string like = "stereo.wav";
    std::string options {};

    /** As many bands are compared, from 320 Hz on. */
    std::size_t bands = 9;

    /** How much softer it is. */
    double softerDb = 0.0;
    bool sameLength = true;
};

/** Figures are equal where the samples are. Where they are not, the tolerances are about twice what the encoding costs:
   noise, what an encoder leaves out, the converter's droop. At another rate the top bands' filters have another shape.
 */
[[nodiscard]] const std::vector<Specimen>& specimens();

/** Makes the recordings that they are made from, and compared with. */
void makeOriginals (const TemporaryFolder& folder);

/** The same sound, and behind it nothing but a hole in the file. */
[[nodiscard]] Maker hugeWav (std::uint64_t dataBytes, bool rf64, int bits = 16, int channels = 2);

/** That a document of the project, which tells what became of the files, says exactly this. With
   SOLVANE_WRITE_FILES_TABLE in the environment it is written first. */
void expectDocument (const std::string& path, const std::string& text);
} // namespace FileZoo
