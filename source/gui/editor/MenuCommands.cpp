#include "gui/editor/MenuCommands.h"

#include "gui/menu/BandSets.h"

using Command = Settings::BurgerMenuCallback;

MenuCommands::MenuCommands (VelmoraAudioProcessor& owner, Solvane& bandsRoom, Overlays& shown)
    : processor (owner), room (bandsRoom), overlays (shown), smartBands (owner.model, bandsRoom, shown)
{
}

void MenuCommands::run (Command command, int number)
{
    // An offer and a message stay until they are answered or over.
    if (command == Command::closeMenu && ! overlays.menuShowing())
        return;

    overlays.hideMenu();

    switch (command)
    {
        case Command::addSmartBands:
            return smartBands.run();
        case Command::resetTargets:
            return resetTargets();
        case Command::deleteAllBands:
            return room.deleteAllBands();
        case Command::addBands:
            return addBands (number);
        case Command::closeMenu:
            break;
    }
}

void MenuCommands::resetTargets()
{
    auto& model = processor.model;
    processor.resetAnalysis();
    model.setTargetsReady (false, false);
    model.setSmartBandsReady (false, false);
    model.setIntegratedLUFSAnalysisChanged (true, true);
    room.forgetMeasurement();
}

void MenuCommands::addBands (int number)
{
    for (const auto frequency : BandSets::ofCount (number))
        room.addBandByHand (frequency);
}
