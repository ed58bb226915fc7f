#pragma once

#include "core/model/PluginModel.h"
#include "gui/band/IBandSurroundings.h"

#include <functional>

/** The room and the model of one instance, as its bands see them. */
class BandSurroundings final : public IBandSurroundings
{
public:
    /** @param room tells how the room is drawn now; it and the model outlive this object */
    BandSurroundings (PluginModel& instance, std::function<RoomGeometry()> room);

    [[nodiscard]] RoomGeometry geometry() const override { return roomGeometry(); }
    [[nodiscard]] GainLimits gainLimits() const override;
    [[nodiscard]] bool isActive (int band) const noexcept override;
    [[nodiscard]] bool scaleAnimating() const override;
    [[nodiscard]] bool takeRebase() override;
    [[nodiscard]] bool wheelReversed() const override;
    [[nodiscard]] bool bandsAlwaysShown() const override;
    [[nodiscard]] bool stereo() const override;
    [[nodiscard]] bool overlayOpen() const override;
    void masterExceeded() override;
    void setTypedGain (float gainDb) override;
    [[nodiscard]] SolvaneControlPanel* freeOverlapPanel (OverlapPanel which) override;
    void setOverlapPanelInUse (OverlapPanel which, bool inUse) override;
    void rebuildOverlapPanels() override;
    [[nodiscard]] MidSideControlPanel* midSidePanel() override;

private:
    PluginModel& model;
    const std::function<RoomGeometry()> roomGeometry;
};
