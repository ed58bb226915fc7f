#pragma once

#include <string>
#include <string_view>

/** A text that comes from outside, such as the name of a file, for a terminal: what would steer the terminal, or is no
    text, is shown as its bytes, `\x1b` for the escape character. Everything else stays as it is. */
[[nodiscard]] std::string printable (std::string_view text);
