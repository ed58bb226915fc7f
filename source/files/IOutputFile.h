#pragma once

#include <juce_core/juce_core.h>

#include <memory>
#include <string>

/** What a result is written into, and what counts only once it is complete. */
class IOutputFile
{
public:
    virtual ~IOutputFile() = default;

    /** Where to write; to be ended before commit(). Null when the file cannot be made, see reason(). Once. */
    [[nodiscard]] virtual std::unique_ptr<juce::OutputStream> open() = 0;

    /** Whether something that was written did not reach the file so far. */
    [[nodiscard]] virtual bool hasFailed() const noexcept = 0;

    /** Why, in words. */
    [[nodiscard]] virtual std::string reason() const = 0;

    /** Makes it count. False, with a reason, when not every byte is there. */
    [[nodiscard]] virtual bool commit() = 0;
};
