#include "gui/band/BandKeys.h"

#include <algorithm>
#include <cmath>

using Action = BandKey::Action;

namespace
{
constexpr float gainStep = 0.5f;
constexpr float fineGainStep = 0.1f;
constexpr float qStep = 0.5f;
constexpr float fineQStep = 0.1f;
constexpr float midSideStep = 0.1f;
constexpr float fineMidSideStep = 0.01f;

/** The parameter's own step, and a semitone. */
constexpr float fineFrequencyStepHz = 10.0f;
const float frequencyRatio = std::exp2 (1.0f / 12.0f);

float step (const BandKey& key, float coarse, float fine) noexcept
{
    return static_cast<float> (key.direction) * (key.fine ? fine : coarse);
}

BandKey arrowOf (int direction, bool vertical, juce::ModifierKeys modifiers)
{
    const auto fine = modifiers.isShiftDown();

    if (modifiers.isAltDown())
        return { vertical || modifiers.isCtrlDown() ? Action::none : Action::midSide, direction, fine };

    if (modifiers.isCtrlDown())
        return { Action::q, direction, fine };

    return { vertical ? Action::frequency : Action::gain, direction, fine };
}

BandKey letterOf (int code)
{
    switch (juce::CharacterFunctions::toUpperCase (static_cast<juce::juce_wchar> (code)))
    {
        case 'S':
            return { Action::toggleSolo };
        case 'B':
            return { Action::toggleBypass };
        case 'H':
            return { Action::toggleShelf };
        default:
            return {};
    }
}
} // namespace

BandKey bandKeyOf (const juce::KeyPress& key)
{
    const auto modifiers = key.getModifiers();
    const auto code = key.getKeyCode();

    if (code == juce::KeyPress::rightKey || code == juce::KeyPress::leftKey)
        return arrowOf (code == juce::KeyPress::rightKey ? 1 : -1, false, modifiers);

    if (code == juce::KeyPress::upKey || code == juce::KeyPress::downKey)
        return arrowOf (code == juce::KeyPress::upKey ? 1 : -1, true, modifiers);

    if (code == juce::KeyPress::returnKey)
        return { modifiers.isCtrlDown()    ? Action::typeQ
                 : modifiers.isShiftDown() ? Action::typeFrequency
                                           : Action::typeGain };

    if (modifiers.isAltDown())
        return modifiers.isCtrlDown() ? BandKey {} : letterOf (code);

    if (modifiers.isAnyModifierKeyDown())
        return {};

    if (code == juce::KeyPress::deleteKey)
        return { Action::remove };

    return code == juce::KeyPress::escapeKey ? BandKey { Action::leave } : BandKey {};
}

float BandStep::gain (float gainDb, const BandKey& key) noexcept
{
    return gainDb + step (key, gainStep, fineGainStep);
}

float BandStep::frequency (int frequencyHz, const BandKey& key) noexcept
{
    const auto frequency = static_cast<float> (frequencyHz);

    if (key.fine)
        return frequency + step (key, 0.0f, fineFrequencyStepHz);

    return key.direction > 0 ? frequency * frequencyRatio : frequency / frequencyRatio;
}

float BandStep::q (float q, const BandKey& key) noexcept
{
    return q + step (key, qStep, fineQStep);
}

float BandStep::midSide (float value, const BandKey& key) noexcept
{
    return std::clamp (value + step (key, midSideStep, fineMidSideStep), 0.0f, 1.0f);
}
