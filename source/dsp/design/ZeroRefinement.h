#pragma once

#include <complex>
#include <cstddef>
#include <span>

/** Improves approximate zeros on a polynomial itself.

    A view: the coefficients, highest power first and the first not 0, must outlive it, and 0 must not be a zero.
   Nothing is allocated. */
class ZeroRefinement
{
public:
    using Zero = std::complex<double>;

    explicit ZeroRefinement (std::span<const double> polynomialToUse) noexcept : polynomial (polynomialToUse) {}

    /** Newton's steps on the polynomial divided by the known zeros, kept while they bring its value down.

        The division (by Maehly's formula, without computing it) keeps the steps from falling back to a zero that is
        known. `repelConjugate` counts the zero's conjugate among those. */
    [[nodiscard]] Zero improve (Zero zero, std::span<const Zero> known, bool repelConjugate) const noexcept;

    /** Moves all zeros together until the polynomial's value at each is no more than rounding may leave and no two of
        them claim the same simple zero. They repel one another (O. Aberth, "Iteration methods for finding all zeros of
       a polynomial simultaneously", Mathematics of Computation 27, 1973), so that those which started in a wrong place
        find the ones that are left. False when that does not come to an end. */
    [[nodiscard]] bool settle (std::span<Zero> zeros) const noexcept;

private:
    [[nodiscard]] bool isZero (Zero point) const noexcept;
    [[nodiscard]] bool repeatsSimpleZero (std::span<const Zero> zeros, std::size_t index) const noexcept;
    [[nodiscard]] double roundingErrorAt (double modulus) const noexcept;

    std::span<const double> polynomial;
};
