#pragma once

#include "dsp/design/BandDesign.h"
#include "dsp/filters/MagnitudeCurve.h"

#include <array>
#include <span>
#include <vector>

/** Which of the two filters of the normal path have something to do. */
struct BandPresence
{
    /** A band above 1500 Hz is in use. */
    bool high = false;

    /** A band at or below 1500 Hz is in use. */
    bool low = false;

    bool operator== (const BandPresence&) const = default;
};

/** The magnitude curves of one mode's ten bands, and their sums.

    All curves have `curvePointCount` points of linear magnitude. Bands are combined by adding their deviations from 1,
    each addition rounded to single precision: overlapping boosts add in amplitude, and two deep cuts may make a
   negative sum. Nothing is allocated after construction. One thread at a time. */
class BandCurves
{
public:
    explicit BandCurves (BlockProcessorMode modeToUse);

    /** Evaluates the message's band anew: its solo curve while a band is soloed, its normal curve otherwise. */
    void designBand (BandMessageName message, float value, const DesignSettings& settings) noexcept;

    /** Evaluates a band anew as it is drawn; into the same curve. */
    void drawBand (int band, const BandDrawing& drawing, const DesignSettings& settings) noexcept;

    /** Sums the bands that are in use (gain parameter not 0, not bypassed) into the high and the low curve, by the side
        of 1500 Hz on which their frequency parameter lies. */
    void sumBands (const DesignSettings& settings) noexcept;

    /** Joins the high and the low curve, which spans the reduced rate's band only, into the curve that is drawn. */
    void sumDisplay (int decimationFactor) noexcept;

    /** Sums the deviations of the soloed bands and brings the highest point to 1. */
    void sumSolo (const DesignSettings& settings) noexcept;

    [[nodiscard]] BlockProcessorMode mode() const noexcept { return curveMode; }

    /** What a band's curve was last drawn as: its gain as it acts in this mode. Flat before the first design. */
    [[nodiscard]] const BandShape& bandShape (int band) const noexcept;
    [[nodiscard]] std::span<const double> bandCurve (int band) const noexcept;
    [[nodiscard]] std::span<const double> soloBandCurve (int band) const noexcept;

    /** Zero until the first sum. */
    [[nodiscard]] std::span<const double> highCurve() const noexcept { return high; }
    [[nodiscard]] std::span<const double> lowCurve() const noexcept { return low; }
    [[nodiscard]] std::span<const double> soloCurve() const noexcept { return solo; }

    /** 1 until the first sum. */
    [[nodiscard]] std::span<const double> displayCurve() const noexcept { return display; }

    [[nodiscard]] BandPresence bandPresence() const noexcept { return presence; }

private:
    using Curve = std::vector<double>;

    BlockProcessorMode curveMode;
    std::array<BandShape, bandCount> shapes {};
    std::array<Curve, bandCount> bandCurves;
    std::array<Curve, bandCount> soloBandCurves;
    Curve high;
    Curve low;
    Curve solo;
    Curve display;
    BandPresence presence;
};
