#include "files/Descriptor.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

Descriptor::~Descriptor()
{
    if (owned >= 0)
        ::close (owned);
}

Descriptor::Descriptor (Descriptor&& other) noexcept : owned (std::exchange (other.owned, -1)) {}

Descriptor& Descriptor::operator= (Descriptor&& other) noexcept
{
    std::swap (owned, other.owned);
    return *this;
}

Descriptor Descriptor::toRead (const std::filesystem::path& place)
{
    return Descriptor (::open (place.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

Descriptor Descriptor::toMake (const std::filesystem::path& place)
{
    return Descriptor (::open (place.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
}

Descriptor Descriptor::withoutName (const std::filesystem::path& folder)
{
    auto name = (folder / "solvane-XXXXXX").string();
    Descriptor made (::mkostemp (name.data(), O_CLOEXEC));

    if (made.isOpen())
        ::unlink (name.c_str());

    return made;
}

std::int64_t Descriptor::size() const noexcept
{
    struct stat status
    {
    };
    return ::fstat (owned, &status) == 0 ? status.st_size : 0;
}
