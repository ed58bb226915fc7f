#pragma once

/** Coefficients of a peak (bell) filter, denominator first. A record without state: it is evaluated, never run. */
struct PeakCoefficients
{
    double a0 = 1.0;
    double a1 = 0.0;
    double a2 = 0.0;
    double b0 = 1.0;
    double b1 = 0.0;
    double b2 = 0.0;

    /** Computes the coefficients; a cut is the exact inverse of the boost of equal size. Real-time safe.

        @param frequencyHz centre, below half the design rate
        @param q           above 0
        @param designRate  in Hz: the rate at which the curve will be used */
    void design (double gainDb, double frequencyHz, double q, double designRate) noexcept;
};
