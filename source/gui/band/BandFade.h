#pragma once

/** How strongly a band is drawn: it brightens while it has the focus. One step for each tick of 20 ms. */
class BandFade
{
public:
    static constexpr int tickMs = 20;
    static constexpr int restStep = 14;
    static constexpr int stepCount = 20;

    /** Sets where the fade goes. @param bright towards the end, else back to rest */
    void setBright (bool bright) noexcept { target = bright ? stepCount : restStep; }

    /** Goes there at once. */
    void jump() noexcept { step = target; }

    /** One step; false if there was none left to go. */
    bool tick() noexcept;

    [[nodiscard]] bool settled() const noexcept { return step == target; }

    /** The step as a fraction of all: 0.7 at rest, 1 at the end. */
    [[nodiscard]] float amount() const noexcept { return static_cast<float> (step) / stepCount; }

private:
    int step = restStep;
    int target = restStep;
};
