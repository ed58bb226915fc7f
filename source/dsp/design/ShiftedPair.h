#pragma once

#include <complex>
#include <cstddef>
#include <span>
#include <vector>

/** x^2 + u x + v. */
struct Quadratic
{
    double u = 0.0;
    double v = 0.0;
};

/** A monic polynomial P, and K of one degree less, which is shifted until it shows where a zero of P lies.

    These are the two sequences of M. A. Jenkins and J. F. Traub, "A three-stage algorithm for real polynomials using
    quadratic iteration", SIAM Journal on Numerical Analysis 7 (1970); which shifts are made, and when, is up to the
    caller. P has a degree of at least 3 wherever K is used.

    Everything is allocated by the constructor. One thread at a time. */
class ShiftedPair
{
public:
    /** P at a place, and whether that is no more than its rounding error. */
    struct ValueOfP
    {
        double value;
        bool isZero;
    };

    explicit ShiftedPair (std::size_t maxDegree);

    /** Makes P of coefficients with the highest power first, of which the first is not 0. */
    void take (std::span<const double> coefficients) noexcept;

    [[nodiscard]] std::size_t degree() const noexcept { return n; }

    /** P, highest power first. */
    [[nodiscard]] std::span<const double> coefficients() const noexcept { return { p.data(), n + 1 }; }

    /** Divides P by x - zero, or by a quadratic, and forgets what remains. */
    void takeOut (double zero) noexcept;
    void takeOut (const Quadratic& factor) noexcept;

    /** Puts K aside, or takes it back; a store is as long as the greatest degree. */
    void keepK (std::span<double> store) const noexcept;
    void restoreK (std::span<const double> store) noexcept;

    /** Starts K as the derivative and shifts it from 0, which brings out the small zeros. */
    void shiftFromZero (int times) noexcept;

    void divideP (const Quadratic& sigma) noexcept;
    void divideK (const Quadratic& sigma) noexcept;

    /** Makes K the sum of itself and the multiple of P of degree one that makes the sum divisible by sigma, divided by
        sigma.

        With P = Qp sigma + b (x + u) + a and K = Qk sigma + d (x + u) + c it is
        (a^2 + u a b + v b^2) / (b c - a d) Qk + (x - (a c + u a d + v b d) / (b c - a d)) Qp + b, which keeps the
        leading coefficient of P. False, with an unscaled K, when b c - a d vanishes. Expects both divisions to be up
        to date. */
    bool stepK (const Quadratic& sigma) noexcept;

    /** The quadratic that K points at. With K0 = K and K(j+1) = (Kj - Kj(0) / P(0) P) / x it is
        (D12 x^2 - D02 x + D01) / D12, where Dij is the determinant of Ki and Kj at the two zeros of sigma; the
        remainders modulo sigma are enough for those. {0, 0} when it does not exist. Expects both divisions to be up to
        date. */
    [[nodiscard]] Quadratic nextQuadratic (const Quadratic& sigma) const noexcept;

    /** The real zero that K points at; 0 when it points at none. */
    [[nodiscard]] double nextZero() const noexcept;

    /** Whether P at a zero of sigma is no more than rounding error; `residual` is its size. Expects P to be divided by
        sigma. */
    [[nodiscard]] bool
    isZeroPair (const Quadratic& sigma, const std::complex<double>& zero, double& residual) const noexcept;

    /** Divides P by x - shift. */
    ValueOfP divideP (double shift) noexcept;

    /** The step of K for a real shift, with P divided by x - shift and its value there; how far to go on from the shift
        is returned, 0 when K does not say. */
    double stepK (double shift, double valueOfP) noexcept;

private:
    /** What a division by x^2 + u x + v leaves: slope (x + u) + offset. */
    struct Remainder
    {
        double slope = 0.0;
        double offset = 0.0;
    };

    std::size_t n = 0; ///< the degree of P
    std::vector<double> p;
    std::vector<double> k;
    std::vector<double> quotientP;
    std::vector<double> quotientK;
    Remainder remainderP;
    Remainder remainderK;
};
