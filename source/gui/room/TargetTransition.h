#pragma once

#include <span>
#include <vector>

/** The drawn target curve on its way from one set of values to the next, and the pulse that is shown until a target has
    been measured. Counted in frames; values in dB, one for each point of the curve. One thread. */
class TargetTransition
{
public:
    /** @param frameCount  frames of a transition, above 0
        @param pulseFrameCount frames of a pulse's period, above 0 */
    TargetTransition (int frameCount, int pulseFrameCount);

    /** Stands at these values at once. */
    void restart (std::span<const double> rows);

    /** To be called once for each frame, before the values are read: takes a step, and sets out for `rows` when it
       rests somewhere else. Another number of values than before restarts.
        @return true while what is to be drawn changes */
    bool advance (std::span<const double> rows);

    /** The value to draw for a point, this frame. */
    [[nodiscard]] double value (std::size_t index) const noexcept;

    [[nodiscard]] std::size_t size() const noexcept { return to.size(); }

    //==================================================================================================================
    /** Takes a step of the pulse. Once it has come round, the curve stands at 0 dB, from where a target sets out. */
    void advancePulse();

    /** The pulse begins anew when it is wanted again. */
    void stopPulse() noexcept { pulseFrame = 0; }

    /** Strength of the pulse, this frame: 0 to 1. It swells twice in a period. */
    [[nodiscard]] float pulseAlpha() const noexcept;

private:
    const int frames;
    const int pulseFrames;
    int frame;
    int pulseFrame = 0;
    std::vector<double> from;
    std::vector<double> to;
};
