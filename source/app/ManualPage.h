#pragma once

#include "app/CommandDescription.h"

#include <string>

/** A program as a page of section 1 in the macros of `man`. */
[[nodiscard]] std::string manualPage (const CommandDescription& program, const std::string& version);
