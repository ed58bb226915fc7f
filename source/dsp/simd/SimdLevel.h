#pragma once

/** What the vector code may use: the plain baseline, AVX2 with FMA (x86-64-v3), or AVX-512 (x86-64-v4). */
enum class SimdLevel
{
    baseline,
    v3,
    v4
};

/** The level in use: the best that machine and build offer, unless setSimdLevel chose a lower one.
    Any thread. Real-time safe. */
[[nodiscard]] SimdLevel simdLevel() noexcept;

/** The best level that machine and build offer. */
[[nodiscard]] SimdLevel bestSimdLevel() noexcept;

/** Chooses the level for the whole process, for tests and benchmarks that compare levels. A level above the best is
    refused with false. Not while audio runs. */
bool setSimdLevel (SimdLevel level) noexcept;
