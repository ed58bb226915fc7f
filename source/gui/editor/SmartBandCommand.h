#pragma once

#include "gui/editor/Overlays.h"
#include "gui/room/Solvane.h"
#include "targets/SmartBands.h"

/** ADD SMART BANDS: answers the target's curve with up to ten bands, in place of those that hang in the room.

    It says in the menu's panel why it did nothing. Where the curve has peaks and dips, but none worth a band, the room
   is left empty without a word. Message thread. */
class SmartBandCommand
{
public:
    /** All outlive this object. */
    SmartBandCommand (PluginModel& model, Solvane& room, Overlays& overlays);

    void run();

private:
    /** What the curve on the walls asks for, as it is shown now. */
    [[nodiscard]] std::vector<SmartBand> search() const;
    void hang (const SmartBands::Setting& setting);

    PluginModel& model;
    Solvane& room;
    Overlays& overlays;
};
