#pragma once

#include <optional>

/** Whether the output control's icon warns that the output is not as loud as the input.

    The icon is only told to change when the difference has moved by a tenth of a decibel, and keeps still while there
   is nothing to compare, so that it does not flicker. */
class LevelMatchIcon
{
public:
    /** Above this difference in dB the icon warns. */
    static constexpr float toleranceDb = 2.0f;

    struct Levels
    {
        float outputGainDb = 0.0f;

        /** The gain at which output and input would be as loud as each other; not finite where that is not known. */
        float levelMatchDb = 0.0f;
        bool soloed = false;
        bool bypassed = false;
    };

    /** True for the warning icon, false for the plain one, nothing where the icon stays as it is. */
    [[nodiscard]] std::optional<bool> update (const Levels& levels) noexcept;

    [[nodiscard]] static bool warns (float outputGainDb, float levelMatchDb) noexcept;

private:
    /** The difference in tenths of a decibel that the icon was last chosen by. */
    std::optional<int> shownTenths;
};
