#pragma once

#include <cstddef>
#include <span>
#include <vector>

/** A stretch of one sign in what is left to do: a band could answer it. */
struct FitHill
{
    double peakHz = 0.0;

    /** Of a band that would level it. Bands add in amplitude, so where others act already this is not the error. */
    double gainDb = 0.0;

    /** Height by width, by which the largest part of the work is told. */
    double area = 0.0;

    /** Where it is half as high as at its peak, or where it ends. */
    double lowHz = 0.0;
    double highHz = 0.0;

    /** False where another one lies above it. */
    bool reachesTop = false;
};

/** The stretches of an error, the largest first.

    @param frequenciesHz rising, at equal steps of octaves
    @param errorDb       how far the response should rise there
    @param responseDb    what it is already; all three of one length */
[[nodiscard]] std::vector<FitHill>
fitHills (std::span<const double> frequenciesHz, std::span<const double> errorDb, std::span<const double> responseDb);
