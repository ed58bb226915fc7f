#pragma once

#include "gui/editor/Overlays.h"
#include "gui/editor/SmartBandCommand.h"
#include "gui/room/Solvane.h"

/** What the burger menu's commands do. Message thread. */
class MenuCommands
{
public:
    /** All outlive this object. */
    MenuCommands (VelmoraAudioProcessor& processor, Solvane& room, Overlays& overlays);

    /** @param number with addBands: how many, from 1 to 10 */
    void run (Settings::BurgerMenuCallback command, int number);

private:
    void resetTargets();
    void addBands (int number);

    VelmoraAudioProcessor& processor;
    Solvane& room;
    Overlays& overlays;
    SmartBandCommand smartBands;
};
