#pragma once

#include "core/model/PluginModel.h"
#include "gui/editor/DropDownPanels.h"
#include "gui/editor/EditorMessages.h"
#include "gui/editor/Overlays.h"

/** Shows what the window says unasked, where the situation allows it; EditorMessages has the texts and the conditions.
    Message thread. */
class UnaskedMessages
{
public:
    /** All outlive this object. */
    UnaskedMessages (PluginModel& model, Overlays& overlays, DropDownPanels& dropDowns);

    /** Whether Master fits the bands has changed. */
    void explainMasterLimits();

    /** A scale has left bands outside. */
    void noteBandsOutOfScale();

    /** The target has settled, or is no longer. */
    void offerSmartBands();

private:
    [[nodiscard]] EditorMessages::Situation situation() const;

    PluginModel& model;
    Overlays& overlays;
    DropDownPanels& dropDowns;
};
