#pragma once

#include "files/WrittenFile.h"

#include <juce_core/juce_core.h>

#include <array>
#include <memory>

/** Writes a file of the system, and tells its WrittenFile what became of it. One thread. */
class FileOutput final : public juce::OutputStream
{
public:
    explicit FileOutput (std::shared_ptr<WrittenFile> fileToWrite) : file (std::move (fileToWrite)) {}
    ~FileOutput() override { flush(); }

    void flush() override;
    bool setPosition (juce::int64 newPosition) override;
    juce::int64 getPosition() override { return position; }

    /** False once anything has failed to reach the file. What is small is kept until there is more. */
    bool write (const void* data, size_t byteCount) override;

private:
    void store (const char* data, size_t byteCount, juce::int64 place);

    const std::shared_ptr<WrittenFile> file;
    juce::int64 position = 0;

    /** What stands before `position` and is not stored yet. */
    std::array<char, 32768> kept {};
    size_t keptCount = 0;
};
