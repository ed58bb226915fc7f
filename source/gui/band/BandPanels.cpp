#include "gui/band/BandPanels.h"

namespace
{
/** Above whatever else the window holds. */
constexpr int panelOrder = 100;

constexpr int midSideKind = static_cast<int> (Settings::Parameter::midSide);
} // namespace

BandPanels::BandPanels (juce::Component& editor, VelmoraAudioProcessor& owner) : window (editor), processor (owner)
{
    rebuild();
    window.addChildComponent (midSide, panelOrder);
    processor.model.interfaceState.midSidePanel = &midSide;
    bindMidSide();
}

BandPanels::~BandPanels()
{
    auto& state = processor.model.interfaceState;
    state.upperPanel = nullptr;
    state.lowerPanel = nullptr;
    state.midSidePanel = nullptr;
}

void BandPanels::rebuild()
{
    auto& state = processor.model.interfaceState;

    if (state.upperPanelInUse || state.lowerPanelInUse)
        return;

    const auto make = [this] (std::unique_ptr<SolvaneControlPanel>& panel, auto& shared)
    {
        panel = std::make_unique<SolvaneControlPanel> (SolvaneControlPanel::Shape::overlap);
        window.addChildComponent (*panel, panelOrder);
        shared = panel.get();
    };

    make (upperPanel, state.upperPanel);
    make (lowerPanel, state.lowerPanel);
}

void BandPanels::bindMidSide()
{
    const auto parameterOf = [this] (int band)
    { return processor.getAPVTS().getParameter (ParameterIds::ofBand (band, Settings::Parameter::midSide)); };

    midSide.onValue = [this] (int band, float value)
    { processor.model.setBandValueFromControl (band, value, midSideKind); };

    midSide.onGestureBegin = [parameterOf] (int band)
    {
        if (auto* const parameter = parameterOf (band))
            parameter->beginChangeGesture();
    };

    midSide.onGestureEnd = [parameterOf] (int band)
    {
        if (auto* const parameter = parameterOf (band))
            parameter->endChangeGesture();
    };
}
