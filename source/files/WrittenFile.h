#pragma once

#include "files/Descriptor.h"

#include <string>

/** A file that is being written, and what became of that so far. It outlives the stream that writes it, as writers
    store their last bytes when they die. */
struct WrittenFile
{
    Descriptor file;
    bool failed = false;

    /** Why, in the system's words. */
    std::string reason;

    /** Size that the file must have, in bytes. */
    std::int64_t end = 0;

    /** Notes what errno says; the first failure is the one that counts. */
    void fail();

    /** Whether every byte is there. A disk that has room for a part of the last ones may report no error for them. */
    [[nodiscard]] bool isWhole() const noexcept { return ! failed && file.size() == end; }

    /** In words; when the system said nothing, it is the room. */
    [[nodiscard]] std::string reasonInWords() const;
};
