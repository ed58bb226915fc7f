#pragma once

#include "dsp/BandDrawing.h"
#include "dsp/BlockProcessorMode.h"
#include "dsp/design/FirLengths.h"

#include <array>
#include <optional>
#include <span>
#include <string_view>

constexpr int bandCount = 10;

/** The parameters of one band, as the host stores them: switches are 0 or 1. */
struct BandSettings
{
    float frequencyHz = 320.0f;
    float gainDb = 0.0f;
    float q = 1.0f;
    float solo = 0.0f;
    float bypass = 0.0f;
    float active = 0.0f;

    /** 0 is a bell, anything else a high shelf. */
    float highShelf = 0.0f;

    /** 0 is mid alone, exactly 0.5 is left and right, 1 is side alone. */
    float midSide = 0.5f;
};

/** A snapshot of everything that a design reads. A plain value: taken once, then used by one thread. */
struct DesignSettings
{
    std::array<BandSettings, bandCount> bands {};
    float gainScalePercent = 100.0f;
    FilterMode filterMode = FilterMode::master;
    FilterPhase filterPhase = FilterPhase::linear;

    /** Of the host, in Hz. */
    double sampleRate = 48000.0;

    /** Host rate over reduced rate. */
    int decimationFactor = 4;

    bool soloActive = false;

    /** The message's gain holds the gain scale already. */
    bool gainScaleApplied = false;

    bool mainBypass = false;
};

/** The parameter that a message carries. */
enum class BandMessageKind
{
    solo,
    bypass,
    gain,
    q,
    frequency,
    highShelf,
    midSide
};

/** The parts of a message's name. */
struct BandMessageName
{
    BandMessageKind kind;
    int band;

    bool operator== (const BandMessageName&) const = default;
};

/** Reads a parameter's name, for example "band_gain_3". Nothing for names that hold no word of ours and for band
    numbers other than 0 to 9. Real-time safe. */
[[nodiscard]] std::optional<BandMessageName> parseBandMessageName (std::string_view name) noexcept;

/** What one band is to be drawn as; the gain is the effective one. */
struct BandShape
{
    float gainDb = 0.0f;
    float frequencyHz = 0.0f;
    float q = 0.0f;
    bool highShelf = false;

    /** In Hz: the host's rate or the reduced one. */
    double designRate = 0.0;
};

/** The gain in dB that a mode's filter gets for a band whose gain parameter is `gainDb`: scaled by the gain scale and
    shared out between the modes by the band's mid/side value. 1 dB for a soloed band, whose curve's height is
   normalised away later. Real-time safe. */
[[nodiscard]] float
effectiveGain (float gainDb, int band, BlockProcessorMode mode, const DesignSettings& settings) noexcept;

/** What a message comes to. `value` takes the place of the parameter that the message names; the others are the
    settings'. In Master a gain message is held within 4 dB and a Q message to 1.5, while stored values pass. Under the
    main bypass the three audio modes start from a gain of 0 whatever the message says. Real-time safe. */
[[nodiscard]] BandDrawing
bandDrawingFor (BandMessageName message, float value, BlockProcessorMode mode, const DesignSettings& settings) noexcept;

/** The shape of a drawing in a mode, as the settings' rates and solo switches have it. Real-time safe. */
[[nodiscard]] BandShape
bandShapeFor (const BandDrawing& drawing, int band, BlockProcessorMode mode, const DesignSettings& settings) noexcept;

/** The shape of the message's band, at once. Real-time safe. */
[[nodiscard]] BandShape
bandShapeFor (BandMessageName message, float value, BlockProcessorMode mode, const DesignSettings& settings) noexcept;

/** Evaluates a shape as linear magnitude from 0 Hz to half its design rate, both included. Real-time safe. */
void evaluateBandCurve (const BandShape& shape, std::span<double> curve) noexcept;

/** Whether Master can be chosen: every band, used or not, lies within 4 dB and has a Q of at most 1.5. Real-time safe.
 */
[[nodiscard]] bool checkMasterLimits (const std::array<BandSettings, bandCount>& bands) noexcept;
