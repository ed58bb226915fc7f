#include "core/session/SessionXml.h"

#include "core/parameters/ParameterTable.h"
#include "core/session/XmlGuard.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <map>

namespace
{
/** The framework's binary wrapping: a mark, then the text's length, then the text, which may also end at a zero. */
constexpr int lengthPosition = 4;
constexpr int textPosition = 8;

constexpr auto notANumber = std::numeric_limits<double>::quiet_NaN();

std::string_view textOf (const char* data, int size) noexcept
{
    const auto length = static_cast<int> (juce::ByteOrder::littleEndianInt (data + lengthPosition));
    const std::string_view text (data + textPosition,
                                 static_cast<std::size_t> (std::clamp (length, 0, size - textPosition)));
    return text.substr (0, text.find ('\0'));
}
} // namespace

bool SessionXml::mayBeParsed (const void* data, int size) noexcept
{
    return data != nullptr && size > textPosition
           && XmlGuard::mayBeParsed (textOf (static_cast<const char*> (data), size));
}

std::unique_ptr<juce::XmlElement> SessionXml::parse (const void* data, int size)
{
    return mayBeParsed (data, size) ? juce::AudioProcessor::getXmlFromBinary (data, size) : nullptr;
}

float SessionXml::getDecimal (const juce::XmlElement& element, const juce::String& name)
{
    const auto value = element.getDoubleAttribute (name, 0.0);

    if (std::abs (value) > static_cast<double> (std::numeric_limits<float>::max()))
        return std::copysign (std::numeric_limits<float>::infinity(), static_cast<float> (std::copysign (1.0, value)));

    return static_cast<float> (value);
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

void SessionXml::appendChildren (juce::XmlElement& parent, Elements children)
{
    // The framework walks over all children for each that it appends, and over none for one at the front.
    Elements all;

    while (auto* first = parent.getFirstChildElement())
    {
        parent.removeChildElement (first, false);
        all.emplace_back (first);
    }

    std::move (children.begin(), children.end(), std::back_inserter (all));

    for (auto child = all.rbegin(); child != all.rend(); ++child)
        parent.prependChildElement (child->release());
}

juce::ValueTree SessionXml::parametersIn (const juce::ValueTree& tree)
{
    static const juce::Identifier parameterType ("PARAM");
    static const juce::Identifier idName ("id");
    static const juce::Identifier valueName ("value");

    juce::ValueTree result (tree.getType());
    std::map<juce::String, juce::ValueTree> known;

    for (const auto& row : ParameterTable::rows())
        known.emplace (row.id, juce::ValueTree());

    for (const auto& child : tree)
    {
        const auto id = child.getProperty (idName).toString();
        const auto place = child.hasType (parameterType) ? known.find (id) : known.end();

        if (place == known.end())
            continue;

        auto& parameter = place->second;

        if (! parameter.isValid())
        {
            parameter = juce::ValueTree (parameterType);
            parameter.setProperty (idName, id, nullptr);
            result.appendChild (parameter, nullptr);
        }

        const auto value = static_cast<double> (child.getProperty (valueName, notANumber));

        if (std::isfinite (value))
            parameter.setProperty (valueName, value, nullptr);
        else
            parameter.removeProperty (valueName, nullptr);
    }

    return result;
}

juce::String SessionXml::fileNameOf (const juce::String& path)
{
    return path.substring (juce::jmax (path.lastIndexOfChar ('/'), path.lastIndexOfChar ('\\')) + 1);
}
