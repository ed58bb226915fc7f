#pragma once

#include "files/IOutputFile.h"
#include "files/WrittenFile.h"

/** The standard output as the place of a result: kept in a file without a name, and given out as a whole in commit(),
    since the size in its header is known last. One thread. */
class StandardOutputFile final : public IOutputFile
{
public:
    StandardOutputFile() : written (std::make_shared<WrittenFile>()) {}

    /** Throws CommandError where no temporary file can be made. */
    [[nodiscard]] std::unique_ptr<juce::OutputStream> open() override;
    [[nodiscard]] bool hasFailed() const noexcept override { return written->failed; }
    [[nodiscard]] std::string reason() const override { return written->reasonInWords(); }

    /** Waits for who reads. Throws CommandError (interrupted) when a signal comes. */
    [[nodiscard]] bool commit() override;

private:
    const std::shared_ptr<WrittenFile> written;
};
