#include "app/PictureFile.h"

#include "app/CommandError.h"
#include "app/FileArgument.h"
#include "app/Printable.h"
#include "app/StandardStreams.h"
#include "files/AtomicFile.h"
#include "files/OutputPlace.h"

void PictureFile::requireItMayStand (const std::string& path,
                                     const std::string& option,
                                     const std::vector<std::string>& read)
{
    const auto file = fileFor (path);

    if (! juce::String (printable (file.extension().string())).equalsIgnoreCase (".png"))
        throw CommandError (ExitCode::badArguments, option + " draws a PNG, and '" + path + "' does not end in .png.");

    std::vector<std::filesystem::path> spared;

    for (const auto& each : read)
        if (! StandardStreams::isInput (each))
            spared.push_back (fileFor (each));

    if (const auto refusal = OutputPlace::refusal (file, OutputPlace::Kind::picture, path, spared); refusal.has_value())
        throw CommandError (ExitCode::unwritableOutput, *refusal);
}

void PictureFile::write (const juce::Image& image, const std::string& path)
{
    AtomicFile file (fileFor (path));
    auto stream = file.open();
    const auto drawn = stream != nullptr && juce::PNGImageFormat().writeImageToStream (image, *stream);
    stream.reset();

    if (! drawn || ! file.commit())
        throw CommandError (ExitCode::unwritableOutput,
                            "The picture '" + path + "' could not be written: " + file.reason() + ".");
}
