#include "dsp/path/BlockProcessor.h"

#include <thread>
#include <utility>

BlockProcessor::BlockProcessor (const IDesignSource& ownerToUse, Mode modeToUse)
    : owner (ownerToUse), blockMode (modeToUse), curves (modeToUse)
{
}

bool BlockProcessor::tryOwn() noexcept
{
    return ! owned.test_and_set (std::memory_order_acquire);
}

void BlockProcessor::own() noexcept
{
    while (! tryOwn())
        std::this_thread::yield();
}

void BlockProcessor::disown() noexcept
{
    owned.clear (std::memory_order_release);
}

void BlockProcessor::readSettings (bool gainScaleApplied) noexcept
{
    owner.readDesignSettings (settings);
    settings.gainScaleApplied = gainScaleApplied;
}

void BlockProcessor::configure (const FirLengths& lengths) noexcept
{
    designer.configureLengths (lengths);
    designer.resetTaps();
    path.configureLengths (lengths);
    copyTaps();
}

void BlockProcessor::prepare (double sampleRate)
{
    readSettings (false);
    designer.prepare (sampleRate);
    path.prepare (sampleRate);
    configure (firLengthsFor (sampleRate, settings.filterMode));
}

void BlockProcessor::rebuild() noexcept
{
    readSettings (false);
    configure (firLengthsFor (settings.sampleRate, settings.filterMode));
}

void BlockProcessor::update (float value, const std::string& parameterName, bool gainScaleApplied) noexcept
{
    const auto name = parseBandMessageName (parameterName);

    if (! name.has_value())
        return;

    readSettings (gainScaleApplied);
    drawWithSettings (name->band, bandDrawingFor (*name, value, blockMode, settings));
}

void BlockProcessor::draw (int band, const BandDrawing& drawing) noexcept
{
    readSettings (false);
    drawWithSettings (band, drawing);
}

void BlockProcessor::drawWithSettings (int band, const BandDrawing& drawing) noexcept
{
    curves.drawBand (band, drawing, settings);
    updatesPending = true;

    if (blockMode == Mode::display)
    {
        curves.sumBands (settings);
        curves.sumDisplay (settings.decimationFactor);
    }
}

void BlockProcessor::finishUpdates() noexcept
{
    if (! std::exchange (updatesPending, false) || blockMode == Mode::display)
        return;

    readSettings (false);

    if (settings.soloActive)
    {
        curves.sumSolo (settings);
        designer.makeSoloTaps (curves);
    }
    else
    {
        curves.sumBands (settings);
        designer.makeTaps (curves, settings);
    }

    tapsReady.store (true, std::memory_order_release);
}

void BlockProcessor::copyTaps() noexcept
{
    const auto& sets = designer.tapSets();
    path.setTaps ({ sets.low.taps(), sets.linearHigh.taps(), sets.minimum.taps(), sets.solo.taps() });
    tapsReady.store (false, std::memory_order_relaxed);
}

void BlockProcessor::processStereo (const float* left,
                                    const float* right,
                                    const double* lowLeft,
                                    const double* lowRight,
                                    int count,
                                    bool soloActive,
                                    FilterPhase phase) noexcept
{
    path.processStereo (left, right, lowLeft, lowRight, count, soloActive, phase);
}
