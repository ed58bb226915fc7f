#include "files/WrittenFile.h"

#include <cerrno>
#include <system_error>

void WrittenFile::fail()
{
    if (failed)
        return;

    failed = true;
    reason = std::generic_category().message (errno);
}

std::string WrittenFile::reasonInWords() const
{
    return reason.empty() ? "the disk is full, or the file grew too large" : reason;
}
