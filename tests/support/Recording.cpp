#include "support/Recording.h"

#include <array>
#include <cstdio>
#include <memory>
#include <stdexcept>

Recording readRecording (const std::string& name, int sampleRate)
{
    const auto command = std::string ("\"" SOLVANE_SOX "\" -V1 -D \"" SOLVANE_RECORDINGS "/") + name + ".flac\" -r "
                         + std::to_string (sampleRate) + " -c 2 -e float -b 32 -L -t raw -";
    const std::unique_ptr<std::FILE, int (*) (std::FILE*)> pipe (::popen (command.c_str(), "r"), ::pclose);

    if (pipe == nullptr)
        throw std::runtime_error ("cannot start: " + command);

    Recording recording;
    std::array<float, 2> frame {};

    while (std::fread (frame.data(), sizeof (float), frame.size(), pipe.get()) == frame.size())
    {
        recording.left.push_back (frame[0]);
        recording.right.push_back (frame[1]);
    }

    if (recording.left.empty())
        throw std::runtime_error ("nothing came from: " + command);

    return recording;
}
