#include "gui/room/BandViews.h"

#include "gui/band/BandEdges.h"
#include "gui/room/AutomaticScale.h"
#include "gui/room/BandColours.h"

#include <algorithm>
#include <cmath>

using Kind = Settings::Parameter;

namespace
{
bool isOn (const PluginModel& model, int band, Kind kind) noexcept
{
    return model.getBandValue (band, kind) != 0.0f;
}
} // namespace

bool BandViews::isInUse (const PluginModel& model, int band) noexcept
{
    return isOn (model, band, Kind::active);
}

std::optional<int> BandViews::firstFree (const PluginModel& model) noexcept
{
    for (int band = 0; band < bandCount; ++band)
        if (! isInUse (model, band))
            return band;

    return std::nullopt;
}

std::vector<BandView> BandViews::read (const PluginModel& model)
{
    const auto scaleDb = model.displayScaleDb.load (std::memory_order_relaxed);
    std::vector<BandView> views;

    for (int band = 0; band < bandCount; ++band)
    {
        if (! isInUse (model, band))
            continue;

        const auto frequency = std::max (model.getBandValue (band, Kind::frequency), 1.0f);
        const auto gain = model.getBandValue (band, Kind::gain);
        const auto edges = bandEdges (
            static_cast<int> (frequency), model.getBandValue (band, Kind::q), isOn (model, band, Kind::highShelf));
        views.push_back ({ .band = band,
                           .frequencyHz = frequency,
                           .gainDb = gain,
                           .upperHz = static_cast<float> (edges.upperHz),
                           .lowerHz = static_cast<float> (edges.lowerHz),
                           .colour = bandColours()[static_cast<std::size_t> (band)],
                           .solo = isOn (model, band, Kind::solo),
                           .silent = model.mainBypass() || isOn (model, band, Kind::bypass),
                           .outOfScale = std::abs (gain) > scaleDb && scaleDb != AutomaticScale::choices.back() });
    }

    if (std::ranges::any_of (views, &BandView::solo))
        for (auto& view : views)
            view.silent = view.silent || ! view.solo;

    return views;
}

std::vector<int> BandViews::byFrequency (const PluginModel& model)
{
    auto views = read (model);
    std::ranges::stable_sort (views, {}, &BandView::frequencyHz);
    std::vector<int> order;

    for (const auto& view : views)
        order.push_back (view.band);

    return order;
}

float BandViews::neededScale (const PluginModel& model) noexcept
{
    std::array<AutomaticScale::Band, bandCount + 1> bands {};
    bands.back().typedDb = model.interfaceState.typedGainDb;

    for (int band = 0; band < bandCount; ++band)
        if (isInUse (model, band))
            bands[static_cast<std::size_t> (band)].gainDb = model.getBandValue (band, Kind::gain);

    return AutomaticScale::scaleFor (bands);
}

bool BandViews::anyBeyond (const PluginModel& model, float scaleDb) noexcept
{
    for (int band = 0; band < bandCount; ++band)
        if (isInUse (model, band) && std::abs (model.getBandValue (band, Kind::gain)) > scaleDb)
            return true;

    return false;
}
