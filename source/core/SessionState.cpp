#include "core/SessionState.h"

SessionState::SessionState (PluginModel& modelToUse, juce::AudioProcessorValueTreeState& parametersToUse)
    : model (modelToUse), parameters (parametersToUse)
{
}

void SessionState::write (juce::MemoryBlock& destination)
{
    const std::lock_guard lock (sessionLock);

    if (const auto xml = parameters.copyState().createXml())
        juce::AudioProcessor::copyXmlToBinary (*xml, destination);
}

void SessionState::read (const void* data, int size)
{
    {
        const std::lock_guard lock (sessionLock);
        model.setStateInformationSet (false, false);

        if (const auto xml = juce::AudioProcessor::getXmlFromBinary (data, size))
            if (xml->hasTagName (parameters.state.getType()))
                parameters.replaceState (juce::ValueTree::fromXml (*xml));

        storeBandGains();
    }

    model.setStateInformationSet (true, true);
}

void SessionState::storeBandGains() noexcept
{
    for (int band = 0; band < bandCount; ++band)
        model.storedBandGains[static_cast<std::size_t> (band)] = model.getBandValue (band, Settings::Parameter::gain);
}
