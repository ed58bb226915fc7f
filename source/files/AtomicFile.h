#pragma once

#include <juce_core/juce_core.h>

#include <memory>

/** A file under construction. One thread.

    What is written goes into a file beside the target, which takes the target's place in commit(). Without that,
   whether the program stops, fails or the disk is full, nothing is left behind and an older file stays as it was. A new
   file has the permissions of the one that it replaces. */
class AtomicFile
{
public:
    /** Follows symbolic links. */
    explicit AtomicFile (const juce::File& target);
    ~AtomicFile();

    AtomicFile (const AtomicFile&) = delete;
    AtomicFile& operator= (const AtomicFile&) = delete;

    /** Where to write; to be ended before commit(). Null when the file cannot be made, see reason(). Once. */
    [[nodiscard]] std::unique_ptr<juce::OutputStream> open();

    /** Whether something that was written did not reach the file so far. */
    [[nodiscard]] bool hasFailed() const noexcept;

    /** Why, in words; when the system said nothing, it is the room. */
    [[nodiscard]] juce::String reason() const;

    /** Puts the file in its place. Fails, with the reason, when not every byte is there. */
    [[nodiscard]] juce::Result commit();

    [[nodiscard]] const juce::File& destination() const noexcept { return target; }

private:
    class CheckedStream;
    struct Record;

    void takePermissionsOfTarget() const;

    const juce::File target;
    const juce::File partial;
    std::shared_ptr<Record> record;
};
