#include "core/SessionXml.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <cmath>
#include <string_view>

namespace
{
/** A block of ours nests four deep. */
constexpr int deepestNesting = 32;

/** A count from the outside of tags alone; it may be too high for odd text, never too low for text that nests. */
bool nestsTooDeep (std::string_view text) noexcept
{
    auto depth = 0;

    for (std::size_t index = 0; index + 1 < text.size(); ++index)
    {
        if (text[index] == '<')
        {
            const auto next = text[index + 1];

            if (next == '/')
                --depth;
            else if (next != '!' && next != '?')
                ++depth;
        }
        else if (text[index] == '/' && text[index + 1] == '>')
        {
            --depth;
        }

        if (depth > deepestNesting)
            return true;
    }

    return false;
}

bool isSuspicious (std::string_view text) noexcept
{
    return text.find ("<!DOCTYPE") != std::string_view::npos || nestsTooDeep (text);
}
} // namespace

std::unique_ptr<juce::XmlElement> SessionXml::parse (const void* data, int size)
{
    if (data == nullptr || size <= 0
        || isSuspicious ({ static_cast<const char*> (data), static_cast<std::size_t> (size) }))
        return nullptr;

    return juce::AudioProcessor::getXmlFromBinary (data, size);
}

void SessionXml::setDecimal (juce::XmlElement& element, const juce::String& name, float value)
{
    if (std::isnan (value))
        element.setAttribute (name, "nan");
    else if (std::isinf (value))
        element.setAttribute (name, value > 0.0f ? "inf" : "-inf");
    else
        element.setAttribute (name, static_cast<double> (value));
}

void SessionXml::removeNonNumbers (juce::ValueTree& tree)
{
    static const juce::Identifier valueName ("value");

    for (auto child : tree)
        if (! std::isfinite (static_cast<double> (child.getProperty (valueName, 0.0))))
            child.removeProperty (valueName, nullptr);
}

juce::String SessionXml::fileNameOf (const juce::String& path)
{
    return path.substring (juce::jmax (path.lastIndexOfChar ('/'), path.lastIndexOfChar ('\\')) + 1);
}
