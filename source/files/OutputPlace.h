#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/** Looks at the place where a program is about to write, so that no output destroys what is not its own. */
namespace OutputPlace
{
/** What the output is. It replaces a file of its own kind, or an empty one, and no other. */
enum class Kind
{
    sound,
    picture,
    target
};

/** What a symbolic link stands for, also where nothing is there yet; everything else as it is. */
[[nodiscard]] std::filesystem::path behindLinks (std::filesystem::path file);

/** Whether both are the same file of the system, whatever their names: by links, hard links, other ways of writing. */
[[nodiscard]] bool isSameFile (const std::filesystem::path& one, const std::filesystem::path& other);

/** A sentence where nothing can be written, or where something stands that must not be replaced: a folder, a device, a
    pipe, a file of another kind, or one of `spared`. Nothing where all is well. A symbolic link is followed.
    @param name what the sentence calls the place */
[[nodiscard]] std::optional<std::string> refusal (const std::filesystem::path& place,
                                                  Kind kind,
                                                  const std::string& name,
                                                  const std::vector<std::filesystem::path>& spared = {});

/** Whether a sound file stands there that does not say that this product made it: a recording, for all one knows. */
[[nodiscard]] bool holdsForeignSound (const std::filesystem::path& place);
} // namespace OutputPlace
