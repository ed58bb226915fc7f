#pragma once

#include <memory>
#include <span>
#include <vector>

/** Least-squares design of symmetric FIR filters of one length from magnitude curves.

    A symmetric filter's response is a cosine series, and all points of the grid weigh the same, so the system's matrix
    depends on the length alone. It is factorised once per length; what remains of a design is a product of the solution
    operator with the curve. Objects are immutable and shared by everything in the process that uses the same length. */
class LeastSquaresFir
{
public:
    /** The number of taps that a design for `tapCount` gives: an even count gives one tap fewer. */
    [[nodiscard]] static constexpr int symmetricTapCount (int tapCount) noexcept { return (tapCount - 1) / 2 * 2 + 1; }

    /** The design for `tapCount` (1 to `maxFirTapCount`), made at the first request and kept while somebody holds it.
        Null for other lengths and when the factorisation fails. Allocates and locks: call it while preparing. */
    [[nodiscard]] static std::shared_ptr<const LeastSquaresFir> forTapCount (int tapCount);

    /** Fits the taps' magnitude response to the curve, with the filter's centre as the origin of time.

        False, and the taps stay as they were, when the curve has not `curvePointCount` points, when `taps` has not
        `symmetricTapCount` entries or when the solution is not finite. Real-time safe. */
    [[nodiscard]] bool designSymmetricFir (std::span<const double> curve, std::span<double> taps) const noexcept;

    /** Of the designed filters: always odd. */
    [[nodiscard]] int tapCount() const noexcept { return 2 * half + 1; }

private:
    explicit LeastSquaresFir (int halfLength);

    [[nodiscard]] static std::shared_ptr<const LeastSquaresFir> make (int halfLength);

    /** (Number of taps - 1) / 2. */
    int half;

    /** One row of the solution operator per unknown, over the folded half of the grid. Empty after a failure. */
    std::vector<double> rows;
};
