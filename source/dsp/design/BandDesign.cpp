#include "dsp/design/BandDesign.h"

#include "dsp/filters/MagnitudeCurve.h"
#include "dsp/rate/ReducedRate.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace
{
constexpr float masterGainLimitDb = 4.0f;
constexpr float masterQLimit = 1.5f;
constexpr float gainLimitDb = 12.0f;
constexpr float soloGainDb = 1.0f;
constexpr float midSideCentre = 0.5f;

struct KindWord
{
    std::string_view word;
    BandMessageKind kind;
};

// In the order in which a name is searched.
constexpr std::array kindWords {
    KindWord { "solo", BandMessageKind::solo },           KindWord { "bypass", BandMessageKind::bypass },
    KindWord { "gain", BandMessageKind::gain },           KindWord { "Q", BandMessageKind::q },
    KindWord { "frequency", BandMessageKind::frequency }, KindWord { "highshelf", BandMessageKind::highShelf },
    KindWord { "midside", BandMessageKind::midSide }
};

constexpr bool isDigit (char c) noexcept
{
    return c >= '0' && c <= '9';
}

std::optional<int> bandAtEndOf (std::string_view name) noexcept
{
    if (name.empty() || ! isDigit (name.back()))
        return std::nullopt;

    if (name.size() > 1 && isDigit (name[name.size() - 2]))
        return std::nullopt;

    return name.back() - '0';
}

float stereoGain (const BandDrawing& drawing, float soloSwitch, bool soloActive) noexcept
{
    if (drawing.midSide != midSideCentre || (soloActive && soloSwitch == 0.0f))
        return 0.0f;

    return (soloActive ? soloSwitch == 1.0f : drawing.soloGain) ? soloGainDb : drawing.gainDb;
}

/** `inward` is how far the mid/side value lies in this mode's own half, negative in the other's. */
float midOrSideGain (float gainDb, float inward, bool soloActive) noexcept
{
    if (soloActive)
        return inward > 0.0f ? soloGainDb : 0.0f;

    if (inward == 0.0f)
        return 0.0f;

    return inward > 0.0f ? gainDb : gainDb * (1.0f + 2.0f * inward);
}

float scaledGain (float gainDb, const DesignSettings& settings) noexcept
{
    return settings.gainScaleApplied
               ? gainDb
               : std::clamp (settings.gainScalePercent * gainDb / 100.0f, -gainLimitDb, gainLimitDb);
}

bool soloSwitchCounts (const BandSettings& band, const DesignSettings& settings) noexcept
{
    return ! settings.soloActive && band.solo == 1.0f;
}

/** The mode's share of a drawing's gain. */
float shareOf (const BandDrawing& drawing, float soloSwitch, BlockProcessorMode mode, bool soloActive) noexcept
{
    switch (mode)
    {
        case BlockProcessorMode::stereo:
            return stereoGain (drawing, soloSwitch, soloActive);
        case BlockProcessorMode::mid:
            return midOrSideGain (drawing.gainDb, midSideCentre - drawing.midSide, soloActive);
        case BlockProcessorMode::side:
            return midOrSideGain (drawing.gainDb, drawing.midSide - midSideCentre, soloActive);
        case BlockProcessorMode::display:
            break;
    }

    return drawing.gainDb;
}

/** The band's settings with the message's value in the place of the parameter that it names. */
BandSettings settingsWithMessage (BandMessageName message, float value, const DesignSettings& settings) noexcept
{
    auto band = settings.bands[static_cast<std::size_t> (message.band)];
    const auto master = settings.filterMode == FilterMode::master;

    switch (message.kind)
    {
        case BandMessageKind::solo:
            band.solo = value;
            break;
        case BandMessageKind::bypass:
            band.gainDb = value == 0.0f ? band.gainDb : 0.0f;
            break;
        case BandMessageKind::gain:
            band.gainDb = master ? std::clamp (value, -masterGainLimitDb, masterGainLimitDb) : value;
            break;
        case BandMessageKind::q:
            band.q = master ? std::min (value, masterQLimit) : value;
            break;
        case BandMessageKind::frequency:
            band.frequencyHz = value;
            break;
        case BandMessageKind::highShelf:
            band.highShelf = value;
            break;
        case BandMessageKind::midSide:
            band.midSide = value;
            break;
    }

    return band;
}
} // namespace

std::optional<BandMessageName> parseBandMessageName (std::string_view name) noexcept
{
    const auto band = bandAtEndOf (name);

    if (! band.has_value())
        return std::nullopt;

    for (const auto& [word, kind] : kindWords)
        if (name.find (word) != std::string_view::npos)
            return BandMessageName { kind, *band };

    return std::nullopt;
}

float effectiveGain (float gainDb, int band, BlockProcessorMode mode, const DesignSettings& settings) noexcept
{
    const auto& current = settings.bands[static_cast<std::size_t> (band)];
    const BandDrawing drawing { .gainDb = scaledGain (gainDb, settings),
                                .midSide = current.midSide,
                                .soloGain = soloSwitchCounts (current, settings) };
    return shareOf (drawing, current.solo, mode, settings.soloActive);
}

BandDrawing
bandDrawingFor (BandMessageName message, float value, BlockProcessorMode mode, const DesignSettings& settings) noexcept
{
    const auto band = settingsWithMessage (message, value, settings);
    const auto silenced = settings.mainBypass && mode != BlockProcessorMode::display;

    return { .gainDb = scaledGain (silenced ? 0.0f : band.gainDb, settings),
             .frequencyHz = band.frequencyHz,
             .q = band.q,
             .midSide = band.midSide,
             .highShelf = band.highShelf != 0.0f,
             .soloGain = soloSwitchCounts (band, settings) };
}

BandShape
bandShapeFor (const BandDrawing& drawing, int band, BlockProcessorMode mode, const DesignSettings& settings) noexcept
{
    const auto soloSwitch = settings.bands[static_cast<std::size_t> (band)].solo;
    const auto reduced = ! settings.soloActive && static_cast<double> (drawing.frequencyHz) <= lowPathLimitHz;

    return { .gainDb = shareOf (drawing, soloSwitch, mode, settings.soloActive),
             .frequencyHz = drawing.frequencyHz,
             .q = drawing.q,
             .highShelf = drawing.highShelf,
             .designRate = reduced ? settings.sampleRate / settings.decimationFactor : settings.sampleRate };
}

BandShape
bandShapeFor (BandMessageName message, float value, BlockProcessorMode mode, const DesignSettings& settings) noexcept
{
    return bandShapeFor (bandDrawingFor (message, value, mode, settings), message.band, mode, settings);
}

void evaluateBandCurve (const BandShape& shape, std::span<double> curve) noexcept
{
    if (shape.highShelf)
    {
        orvik::Shelving<double> shelf;
        shelf.frequency = shape.frequencyHz;
        shelf.sampleRate = static_cast<float> (shape.designRate);
        shelf.gainDb = shape.gainDb;
        shelf.updateCoefficients();
        curveOfCoefficients (shelf, curve);
        return;
    }

    PeakCoefficients peak;
    peak.design (static_cast<double> (shape.gainDb),
                 static_cast<double> (shape.frequencyHz),
                 static_cast<double> (shape.q),
                 shape.designRate);
    curveOfCoefficients (peak, curve);
}

bool checkMasterLimits (const std::array<BandSettings, bandCount>& bands) noexcept
{
    return std::none_of (bands.begin(),
                         bands.end(),
                         [] (const BandSettings& band)
                         { return std::abs (band.gainDb) > masterGainLimitDb || band.q > masterQLimit; });
}
