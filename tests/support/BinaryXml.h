#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <memory>
#include <string>
#include <string_view>

/** Any text, well formed or not, in the framework's binary wrapping: a mark, the length, the text and a zero. */
inline juce::MemoryBlock wrapText (std::string_view text)
{
    juce::MemoryOutputStream stream;
    stream.writeInt (0x21324356);
    stream.writeInt (static_cast<int> (text.size()));
    stream.write (text.data(), text.size());
    stream.writeByte (0);
    return stream.getMemoryBlock();
}

inline std::string unwrapText (const juce::MemoryBlock& block)
{
    constexpr std::size_t headerLength = 8;
    return block.getSize() > headerLength ? std::string (static_cast<const char*> (block.getData()) + headerLength)
                                          : std::string();
}

inline std::unique_ptr<juce::XmlElement> parseBlock (const juce::MemoryBlock& block)
{
    return juce::AudioProcessor::getXmlFromBinary (block.getData(), static_cast<int> (block.getSize()));
}

inline juce::MemoryBlock wrapXml (const juce::XmlElement& xml)
{
    juce::MemoryBlock block;
    juce::AudioProcessor::copyXmlToBinary (xml, block);
    return block;
}
