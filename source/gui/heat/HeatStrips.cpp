#include "gui/heat/HeatStrips.h"

#include <utility>

HeatStrips::HeatStrips (LiveSpectrum& spectrumToUse, const PluginModel& modelToUse, std::function<void()> onDrawnToUse)
    : spectrum (spectrumToUse), model (modelToUse), onDrawn (std::move (onDrawnToUse)), signal ([this] { run(); })
{
}

HeatStrips::~HeatStrips()
{
    stop();
    cancelPendingUpdate();
}

void HeatStrips::start()
{
    std::ignore = spectrum.copy (magnitudes);
    thread = std::thread ([this] { signal.run(); });
}

void HeatStrips::stop()
{
    signal.requestExit();

    if (thread.joinable())
        thread.join();
}

bool HeatStrips::needsFrame (const Situation& situation) noexcept
{
    return (situation.heatMapWanted && situation.windowShowing && situation.spectrumFresh) || ! situation.black
           || situation.repaintForced;
}

void HeatStrips::tick (bool windowShowing, bool repaintForced)
{
    Situation situation;
    situation.heatMapWanted = model.showHeatmap();
    situation.windowShowing = windowShowing;
    situation.spectrumFresh = spectrum.hasFresh();
    situation.black = isBlack();
    situation.repaintForced = repaintForced;
    listening = windowShowing;

    if (needsFrame (situation))
        signal.wake();
}

void HeatStrips::drawNow (bool windowShowing)
{
    listening = windowShowing;
    signal.runPass();
}

void HeatStrips::run()
{
    if (frame())
        triggerAsyncUpdate();
}

void HeatStrips::handleAsyncUpdate()
{
    onDrawn();
}

void HeatStrips::listen()
{
    if (! model.showHeatmap())
        peaks.clear();
    else if (listening && spectrum.copy (magnitudes))
        peaks.update (magnitudes);
    else
        peaks.fall();
}

bool HeatStrips::frame()
{
    auto canvas = picture.canvas();

    if (canvas.image.isNull())
        return false;

    listen();
    rows.prepare (canvas.image.getHeight(), model.sampleRate);
    alphas.resize (rows.count());
    const auto glows = rows.alphas (peaks.values(), alphas);
    black = ! glows;

    // What is too faint to be seen does not add up again, and does not end in denormals.
    if (! glows)
        peaks.clear();

    // A picture of another size begins empty.
    if (canvas.generation != drawnGeneration)
        drawnAlphas.assign (alphas.size(), 0);

    drawnGeneration = canvas.generation;

    if (alphas == drawnAlphas)
        return false;

    StripPicture::draw (canvas, alphas);
    picture.publish (canvas);
    std::swap (alphas, drawnAlphas);
    return true;
}
