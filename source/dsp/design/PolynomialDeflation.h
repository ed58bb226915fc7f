#pragma once

#include <span>

// Division of a polynomial, highest power first, by factors that it holds up to rounding. The quotient takes the
// dividend's place and is returned; the leading coefficient stays. Nothing is allocated.
//
// The quotient is computed downwards from the highest power as far as the largest term at the zero, and upwards from
// the lowest power to there. Either direction alone is stable for the smallest or the largest zeros only (G. Peters and
// J. H. Wilkinson, "Practical problems arising in the solution of polynomial equations", Journal of the Institute of
// Mathematics and its Applications 8, 1971).

/** Divides by x - zero. */
std::span<double> divideOut (std::span<double> polynomial, double zero) noexcept;

/** Divides by x^2 + u x + v, v being above 0. The degree is at least 2. */
std::span<double> divideOut (std::span<double> polynomial, double u, double v) noexcept;
