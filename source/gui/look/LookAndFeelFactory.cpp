#include "gui/look/LookAndFeelFactory.h"

VelmoraLookandFeel& lookAndFeelOf (PluginModel& model)
{
    if (model.lookAndFeel == nullptr)
        model.lookAndFeel = std::make_unique<VelmoraLookandFeel> (model.levelMatchPointer);

    // Nobody else makes one.
    return static_cast<VelmoraLookandFeel&> (*model.lookAndFeel);
}
