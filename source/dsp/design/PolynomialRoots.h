#pragma once

#include "dsp/design/ShiftedPair.h"

#include <complex>
#include <cstddef>
#include <span>
#include <vector>

/** Finds all zeros of a real polynomial by the three-stage algorithm with quadratic iteration.

    M. A. Jenkins and J. F. Traub describe it in "A three-stage algorithm for real polynomials using quadratic
   iteration", SIAM Journal on Numerical Analysis 7 (1970), and M. A. Jenkins in "Zeros of a real polynomial", ACM
   Transactions on Mathematical Software 1 (1975). Zeros leave in roughly increasing modulus, conjugates side by side;
   each is then improved on the polynomial as it was given, so that deflation leaves little error behind.

    Everything is allocated by the constructor. One thread at a time. */
class PolynomialRoots
{
public:
    explicit PolynomialRoots (int maxDegreeToServe);

    /** Finds the zeros of the polynomial with these coefficients, highest power first.

        Leading coefficients of 0 are dropped, trailing ones give zeros at 0. False when all coefficients are 0, when
       one is not finite, when the degree is above the greatest, or when not all zeros are found. Allocates nothing. */
    [[nodiscard]] bool find (std::span<const double> coefficients) noexcept;

    /** What the last `find` found, in the order found. */
    [[nodiscard]] std::span<const std::complex<double>> zeros() const noexcept { return { found.data(), foundCount }; }

private:
    using Zero = std::complex<double>;

    /** The two estimates that a fixed shift watches. */
    struct Estimates
    {
        Quadratic quadratic;
        double real = 0.0;
    };

    /** How strictly each estimate must have settled before the shift is set free, and whether it has. */
    struct Convergence
    {
        double tolerance = 0.25;
        double product = 1.0;
        double lastChange = 1.0;
        bool passed = false;

        void update (double change) noexcept;
    };

    enum class LinearOutcome
    {
        found,
        failed,
        cluster
    };

    void takeCoefficients (std::span<const double> coefficients) noexcept;
    [[nodiscard]] bool findNext() noexcept;
    [[nodiscard]] double lowerBoundOfModuli() const noexcept;

    [[nodiscard]] bool applyFixedShift (const Quadratic& sigma, int stepCount) noexcept;
    [[nodiscard]] bool
    applyVariableShift (const Estimates& start, Convergence& quadratic, Convergence& linear) noexcept;
    [[nodiscard]] bool iterateQuadratic (Quadratic sigma) noexcept;
    [[nodiscard]] LinearOutcome iterateLinear (double& shift) noexcept;

    void append (Zero zero) noexcept { found[foundCount++] = zero; }
    void takeLinear (double zero) noexcept;
    void takeQuadratic (const Quadratic& sigma) noexcept;
    void takeRest() noexcept;
    [[nodiscard]] Zero refined (Zero zero, bool repelConjugate) noexcept;

    [[nodiscard]] std::span<const double> givenPolynomial() const noexcept { return { given.data(), givenDegree + 1 }; }

    /** Those of the given polynomial: without the zeros at 0, which were stripped. */
    [[nodiscard]] std::span<Zero> foundZeros() noexcept
    {
        return std::span { found }.subspan (strippedCount, foundCount - strippedCount);
    }

    std::size_t maxDegree;
    std::size_t givenDegree = 0;
    std::size_t foundCount = 0;
    std::size_t strippedCount = 0;
    double angle = 0.0;

    std::vector<double> given; ///< monic, highest power first
    ShiftedPair pair;
    std::vector<double> keptK;
    std::vector<double> startK;

    std::vector<Zero> found;
};
