#include "gui/editor/RoomPlaces.h"

#include "gui/analysis/AnalysisWindow.h"
#include "gui/help/HelpWindow.h"
#include "gui/panels/GainScalePanel.h"
#include "gui/panels/OutputGainPanel.h"
#include "gui/settings/SettingsWindow.h"

using Place = MainWindow::Place;

HelpWindow& RoomPlaces::fill (MainWindow& main,
                              VelmoraAudioProcessor& processor,
                              const WebHosts& hosts,
                              juce::ActionListener& words,
                              juce::MouseListener& pointer)
{
    auto settings = std::make_unique<SettingsWindow> (processor.model);
    settings->addActionListener (&words);

    // The bands look at their setting when their hover ends.
    settings->onSwitched = [&main] { main.room().collapseControls(); };
    main.fill (Place::settingsWindow, std::move (settings));

    main.fill (Place::outputGainPanel, std::make_unique<OutputGainPanel> (processor));
    main.fill (Place::gainScalePanel, std::make_unique<GainScalePanel> (processor));

    // Their sliders included, or a panel would not know that the mouse has left it.
    for (const auto place : { Place::outputGainPanel, Place::gainScalePanel })
        main.component (place)->addMouseListener (&pointer, true);

    auto analysis = std::make_unique<AnalysisWindow> (processor);
    analysis->addActionListener (&words);
    main.fill (Place::analysisWindow, std::move (analysis));

    auto help = std::make_unique<HelpWindow> (processor.model.interfaceState, hosts);
    help->addActionListener (&words);
    auto& page = *help;
    main.fill (Place::helpWindow, std::move (help));
    return page;
}
