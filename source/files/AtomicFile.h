#pragma once

#include "files/IOutputFile.h"
#include "files/Remnant.h"
#include "files/WrittenFile.h"

#include <filesystem>
#include <optional>

/** A file under construction. One thread.

    What is written goes into a file beside the target, which takes the target's place in commit(). Without that,
   whether the program stops, fails or the disk is full, nothing is left behind and an older file stays as it was. A new
   file has the permissions of the one that it replaces. */
class AtomicFile final : public IOutputFile
{
public:
    /** Follows symbolic links. */
    explicit AtomicFile (const std::filesystem::path& target);
    ~AtomicFile() override;

    AtomicFile (const AtomicFile&) = delete;
    AtomicFile& operator= (const AtomicFile&) = delete;

    [[nodiscard]] std::unique_ptr<juce::OutputStream> open() override;
    [[nodiscard]] bool hasFailed() const noexcept override { return written->failed; }
    [[nodiscard]] std::string reason() const override { return written->reasonInWords(); }

    /** Puts the file in its place. */
    [[nodiscard]] bool commit() override;

private:
    void takePermissionsOfTarget() const;

    const std::filesystem::path target;
    const std::filesystem::path partial;
    const std::shared_ptr<WrittenFile> written;

    /** From when the file is there until it has its own name. */
    std::optional<Remnant> remnant;
};
