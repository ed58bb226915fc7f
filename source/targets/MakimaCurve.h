#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

/** A modified Akima interpolant: one cubic between each two knots.

    There is no guard where both weights of a knot's slope are 0, as on a flat stretch: the slope and the cubics beside
    it are then not numbers, and who uses the curve tests for that.
    Not real-time safe: the construction allocates and solves a 4 by 4 system for each segment (LAPACK). */
class MakimaCurve
{
public:
    /** a x^3 + b x^2 + c x + e, with x as given and not relative to a knot. */
    struct Cubic
    {
        double a = 0.0;
        double b = 0.0;
        double c = 0.0;
        double e = 0.0;

        [[nodiscard]] double at (double x) const noexcept { return ((a * x + b) * x + c) * x + e; }

        /** False when a coefficient is not a number. */
        [[nodiscard]] bool isDefined() const noexcept;
    };

    /** @param x knots in rising order, at least three; with fewer there are no segments
        @param y a value for each knot */
    MakimaCurve (std::span<const double> x, std::span<const double> y);

    [[nodiscard]] std::size_t segmentCount() const noexcept { return segments.size(); }

    /** The cubic from knot `index` to the next. It may be asked beyond its ends. */
    [[nodiscard]] const Cubic& segment (std::size_t index) const noexcept { return segments[index]; }

    /** The slope at each knot. */
    [[nodiscard]] std::span<const double> knotSlopes() const noexcept { return slopes; }

    /** False when any segment is undefined. */
    [[nodiscard]] bool isDefined() const noexcept;

private:
    std::vector<double> slopes;
    std::vector<Cubic> segments;
};
