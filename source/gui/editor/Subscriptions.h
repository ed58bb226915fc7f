#pragma once

#include "core/model/NotificationChannels.h"

#include <juce_audio_processors/juce_audio_processors.h>

/** A listener on a notification channel for as long as it lives. */
class NotificationSubscription
{
public:
    NotificationSubscription (NotificationChannels& subscribed,
                              const char* channel,
                              NotificationChannels::Callback callback)
        : channels (subscribed), token (channels.add (std::move (callback), channel))
    {
    }

    ~NotificationSubscription() { channels.remove (token); }

    NotificationSubscription (const NotificationSubscription&) = delete;
    NotificationSubscription& operator= (const NotificationSubscription&) = delete;

private:
    NotificationChannels& channels;
    const int token;
};

/** A listener on a parameter for as long as it lives. */
class ParameterSubscription
{
public:
    ParameterSubscription (juce::AudioProcessorValueTreeState& subscribed,
                           juce::String parameterId,
                           juce::AudioProcessorValueTreeState::Listener& subscriber)
        : tree (subscribed), id (std::move (parameterId)), listener (subscriber)
    {
        tree.addParameterListener (id, &listener);
    }

    ~ParameterSubscription() { tree.removeParameterListener (id, &listener); }

    ParameterSubscription (const ParameterSubscription&) = delete;
    ParameterSubscription& operator= (const ParameterSubscription&) = delete;

private:
    juce::AudioProcessorValueTreeState& tree;
    const juce::String id;
    juce::AudioProcessorValueTreeState::Listener& listener;
};
