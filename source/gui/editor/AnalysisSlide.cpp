#include "gui/editor/AnalysisSlide.h"

#include "gui/look/Palette.h"

namespace
{
/** At rest it ends above the window's lower edge; what slides is as high as all that lies below its top. */
constexpr int restingHeight = 325;
constexpr auto reach = static_cast<int> (EditorClock::slideHeight);
} // namespace

AnalysisSlide::AnalysisSlide (juce::Component& windowToUse,
                              MainWindow& main,
                              InterfaceState& interfaceState,
                              EditorClock& editorClock)
    : window (windowToUse), mainWindow (main), state (interfaceState), clock (editorClock)
{
    mainWindow.addChildComponent (ground);
}

void AnalysisSlide::Ground::paint (juce::Graphics& g)
{
    g.fillAll (juce::Colour (Palette::analysis));
}

void AnalysisSlide::open()
{
    state.analysisOpen = true;
    clock.restartSlide();
    mainWindow.room().setMouseEnabled (false);
    mainWindow.room().collapseControls();
    mainWindow.show (MainWindow::Place::analysisWindow, true);
    state.analysisSliding = true;
}

void AnalysisSlide::close()
{
    ground.setVisible (false);
    mainWindow.room().setMouseEnabled (true);
    mainWindow.room().collapseControls();
    state.analysisOpen = false;
    state.analysisSliding = true;
}

void AnalysisSlide::advance()
{
    const auto slide = clock.advanceSlide (state.analysisOpen);
    const auto height = juce::roundToInt (slide.height);

    if (auto* component = analysis())
    {
        component->setBounds (0, window.getHeight() - height, window.getWidth(), height);

        if (slide.ended && ! state.analysisOpen)
            component->setVisible (false);
    }

    if (slide.ended)
    {
        place();
        state.analysisSliding = false;
    }
}

void AnalysisSlide::place()
{
    auto* component = analysis();

    if (component == nullptr || ! state.analysisOpen)
        return;

    component->setBounds (0, window.getHeight() - reach, window.getWidth(), restingHeight);
    ground.setBounds (mainWindow.getLocalBounds().withTop (component->getBottom()));
    ground.toBehind (component);
    ground.setVisible (true);
}
