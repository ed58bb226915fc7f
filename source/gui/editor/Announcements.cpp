#include "gui/editor/Announcements.h"

#include "gui/editor/EditorMessages.h"

namespace
{
constexpr int noticeWidth = 320;
constexpr int noticeHeight = 50;
constexpr int newsFromFloor = 95;
constexpr int updateFromCeiling = 50;
} // namespace

Announcements::Announcements (PluginModel& pluginModel,
                              MainWindow& main,
                              TopRow& buttons,
                              const WebHosts& hosts,
                              std::function<void()> onChange)
    : model (pluginModel),
      mainWindow (main),
      topRow (buttons),
      link (hosts),
      tell (std::move (onChange)),
      news (model.interfaceState,
            hosts,
            [this]
            {
                show();
                tell();
            })
{
    show();
}

void Announcements::addTo (juce::Component& window, juce::MouseListener& mouse)
{
    link.addTo (window, mouse);
}

void Announcements::place (const EditorLayout& layout)
{
    link.place (layout);
}

void Announcements::show()
{
    using UpdateState = TopRow::UpdateState;
    const auto& state = model.interfaceState;
    topRow.showUpdate (state.updateAvailable       ? UpdateState::available
                       : state.updateCheckAnswered ? UpdateState::none
                                                   : UpdateState::unknown);
    topRow.listenAtTitle (state.newsAvailable);
    link.showNews (state.newsAvailable);
}

void Announcements::followEnter (const juce::Component* entered)
{
    const auto& state = model.interfaceState;

    if (! model.showNotifications)
        return;

    const auto middle = mainWindow.getWidth() / 2;

    if (state.newsAvailable && (link.has (entered) || entered == &topRow.titleButton))
        mainWindow.showNotice (EditorMessages::newProduct(),
                               { middle, mainWindow.getHeight() - newsFromFloor, noticeWidth, noticeHeight });
    else if (state.updateAvailable && entered == &topRow.helpButton)
        mainWindow.showNotice (EditorMessages::update(), { middle, updateFromCeiling, noticeWidth, noticeHeight });
}

void Announcements::followExit()
{
    mainWindow.hideNotice();
}
