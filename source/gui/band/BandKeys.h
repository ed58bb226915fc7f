#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** What a key does to the band that has the keyboard.

    Right and left: gain; up and down: frequency; with Ctrl: Q; with Alt, right and left: side and mid. Shift makes the
    steps fine. Enter types a gain, with Shift a frequency, with Ctrl a Q. Delete removes the band, Escape leaves it.
    Alt with S, B or H: solo, bypass, high shelf. Every other key stays the host's. */
struct BandKey
{
    enum class Action
    {
        none,
        gain,
        frequency,
        q,
        midSide,
        typeGain,
        typeFrequency,
        typeQ,
        toggleSolo,
        toggleBypass,
        toggleShelf,
        remove,
        leave
    };

    Action action = Action::none;

    /** 1 upwards, -1 downwards, for what has steps. */
    int direction = 0;
    bool fine = false;
};

[[nodiscard]] BandKey bandKeyOf (const juce::KeyPress& key);

/** A value one step further; not limited. */
namespace BandStep
{
[[nodiscard]] float gain (float gainDb, const BandKey& key) noexcept;
[[nodiscard]] float frequency (int frequencyHz, const BandKey& key) noexcept;
[[nodiscard]] float q (float q, const BandKey& key) noexcept;

/** Within 0 and 1. */
[[nodiscard]] float midSide (float value, const BandKey& key) noexcept;
} // namespace BandStep
