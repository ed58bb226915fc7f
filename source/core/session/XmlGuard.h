#pragma once

#include <string_view>

/** A look at XML text from an unknown hand, before the framework's parser sees it.

    That parser calls itself for every level of nesting, expands entities of a document type, reads on behind the end of
    text that stops within an escape or within a character, never comes back from a processing instruction that text
    follows, and takes time with the square of what some attributes hold. All of that is refused here. */
namespace XmlGuard
{
/** Bounds far beyond anything that we write. An attribute is as long as it would be when written again. */
constexpr std::size_t longestText = std::size_t { 16 } << 20;
constexpr int deepestNesting = 32;
constexpr int mostNames = 1 << 16;
constexpr std::size_t longestAttribute = std::size_t { 1 } << 16;

/** Whether text may be parsed: UTF-8, within the bounds, without a document type, and well formed to the root's end;
    what follows that is not looked at. Element names need not match, as for the parser. Any thread. */
[[nodiscard]] bool mayBeParsed (std::string_view text) noexcept;
} // namespace XmlGuard
