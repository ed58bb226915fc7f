#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

/** The file with the user's preferences below HOME. It is gone when this object goes, so that no other test begins with
    what one has left behind. */
class Preferences
{
public:
    Preferences() = default;

    /** Writes the attributes as the plug-in keeps them: a mark, a length, XML and a zero. */
    explicit Preferences (std::string_view attributes)
    {
        constexpr std::uint32_t mark = 0x21324356;
        const auto text = "<ZVQ-PRESETS><general-settings " + std::string (attributes) + "/></ZVQ-PRESETS>";
        const std::uint32_t header[] { mark, static_cast<std::uint32_t> (text.size()) };
        std::filesystem::create_directories (path.parent_path());
        std::ofstream file (path, std::ios::binary);
        file.write (reinterpret_cast<const char*> (header), sizeof (header));
        file.write (text.c_str(), static_cast<std::streamsize> (text.size() + 1));
    }

    ~Preferences()
    {
        std::error_code ignored;
        std::filesystem::remove (path, ignored);
    }

    Preferences (const Preferences&) = delete;
    Preferences& operator= (const Preferences&) = delete;

private:
    const std::filesystem::path path =
        std::filesystem::path (std::getenv ("HOME")) / ".config/Brevlen/solvane-settings.dat";
};
