#pragma once

#include "services/WebRequest.h"

#include <functional>

/** Asks the maker's web server whether there is something newer. Quiet: whatever goes wrong counts as nothing new. */
namespace UpdateCheck
{
using Done = std::function<void (bool)>;

/** Whether the server knows a newer version. Waits for the answer, then calls `done` on the same thread.
    @param version our own, such as "1.0.8" */
void checkVersion (WebRequest& request, const juce::String& version, const Done& done);

/** Whether the server has a new product to tell of. Waits for the answer, then calls `done` on the same thread. */
void checkNews (WebRequest& request, const Done& done);

/** Whether an answer names a newer version. Both are compared as whole numbers without their dots: 1.1.0 is 110 and
    newer than 1.0.8, and 1.0.10 is 1010 and newer than both. What is no number but for white space around it is no
    version. */
[[nodiscard]] bool isNewer (const juce::String& answer, const juce::String& version);

/** Whether an answer says that there are news: the word "True", and nothing else at all. */
[[nodiscard]] bool isNews (const juce::String& answer);
} // namespace UpdateCheck
