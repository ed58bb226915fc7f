#include "files/AtomicFile.h"

#include "files/FileOutput.h"
#include "files/OutputPlace.h"

#include <cerrno>
#include <cstdio>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

fs::path hiddenNameBeside (const fs::path& target)
{
    const auto name =
        ".solvane-" + std::to_string (::getpid()) + "-" + std::to_string (juce::Time::getHighResolutionTicks()) + "-";

    for (auto number = 0;; ++number)
    {
        const auto place = target.parent_path() / (name + std::to_string (number) + ".part");
        std::error_code error;

        if (! fs::exists (fs::symlink_status (place, error)))
            return place;
    }
}
} // namespace

AtomicFile::AtomicFile (const fs::path& targetToUse)
    : target (OutputPlace::behindLinks (targetToUse)),
      partial (hiddenNameBeside (target)),
      written (std::make_shared<WrittenFile>())
{
}

AtomicFile::~AtomicFile()
{
    if (remnant.has_value())
        ::unlink (partial.c_str());
}

std::unique_ptr<juce::OutputStream> AtomicFile::open()
{
    remnant.emplace (partial);
    written->file = Descriptor::toMake (partial);

    if (! written->file.isOpen())
    {
        written->fail();
        remnant.reset();
        return {};
    }

    // What others may not read must not lie open while it is made anew.
    takePermissionsOfTarget();
    return std::make_unique<FileOutput> (written);
}

bool AtomicFile::commit()
{
    if (! written->isWhole())
        return false;

    takePermissionsOfTarget();

    if (std::rename (partial.c_str(), target.c_str()) != 0)
    {
        written->fail();
        return false;
    }

    remnant.reset();
    return true;
}

void AtomicFile::takePermissionsOfTarget() const
{
    std::error_code error;

    if (const auto existing = fs::status (target, error); fs::exists (existing))
        fs::permissions (partial, existing.permissions(), error);
}
