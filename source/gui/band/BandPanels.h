#pragma once

#include "core/PluginProcessor.h"
#include "gui/band/MidSideControlPanel.h"
#include "gui/band/SolvaneControlPanel.h"

#include <memory>

/** The panels that all bands of a window share: the spare ones over the bars above and below the room, and the mid/side
    slider that goes to the band in focus. The window owns them, bands borrow them through the model. Message thread. */
class BandPanels
{
public:
    /** @param editor becomes the panels' parent, so that they can lie over its bars; it outlives this object */
    BandPanels (juce::Component& editor, VelmoraAudioProcessor& owner);

    /** Takes the panels out of the model, so that no band looks for them here again. */
    ~BandPanels();

    BandPanels (const BandPanels&) = delete;
    BandPanels& operator= (const BandPanels&) = delete;

    /** Makes the two spare panels anew, unless a band has one of them: what "createOverlapControls" asks for. The
        bands of the room are laid out afterwards. */
    void rebuild();

private:
    void bindMidSide();

    juce::Component& window;
    VelmoraAudioProcessor& processor;
    std::unique_ptr<SolvaneControlPanel> upperPanel;
    std::unique_ptr<SolvaneControlPanel> lowerPanel;
    MidSideControlPanel midSide;
};
