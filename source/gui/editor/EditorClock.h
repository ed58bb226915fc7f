#pragma once

/** The editor's counters, in ticks of its timer. The editor serves them in the order in which they stand here. */
class EditorClock
{
public:
    static constexpr int intervalMs = 40;
    static constexpr int startupTicks = 4000 / intervalMs;
    static constexpr int slideSteps = 5;
    static constexpr int levelIconTicks = 1000 / intervalMs;
    static constexpr int messageTicks = 200;
    static constexpr int repaintTicks = 4000 / intervalMs;

    /** How far the analysis window reaches up when it is open, in pixels. */
    static constexpr float slideHeight = 425.0f;

    /** One tick of the wait after opening; true once it is over. */
    [[nodiscard]] bool advanceStartup() noexcept;

    struct Slide
    {
        /** Pixels of the analysis window that are in the window now. */
        float height = 0.0f;
        bool ended = false;
    };

    /** One step of the analysis window's slide.
        @param opening up, or back down */
    [[nodiscard]] Slide advanceSlide (bool opening) noexcept;
    void restartSlide() noexcept { slideStep = 0; }

    /** One tick; true once a second, when the level-match icon is looked at. */
    [[nodiscard]] bool advanceLevelIcon() noexcept;

    /** One tick of a message that is showing; true when its time is over. */
    [[nodiscard]] bool advanceMessage() noexcept;
    void restartMessage() noexcept { messageTick = 0; }

    /** From now on the window is repainted for some seconds, whether or not anything is heard. */
    void forceRepaint() noexcept;

    /** One tick; true while the window is to be repainted. */
    [[nodiscard]] bool advanceForcedRepaint() noexcept;

private:
    int startupTick = 0;
    int slideStep = 0;
    int levelIconTick = 0;
    int messageTick = 0;
    int repaintTick = 0;
    bool repaintForced = false;
};
