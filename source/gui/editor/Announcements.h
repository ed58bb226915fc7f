#pragma once

#include "core/model/PluginModel.h"
#include "gui/editor/MainWindow.h"
#include "gui/editor/MakersNews.h"
#include "gui/editor/TopRow.h"
#include "gui/editor/WebsiteLink.h"

/** What the window lets know of updates and new products: a mark on the help button and on the link to the website,
    their tips, and a notice while the pointer is over them. Message thread. */
class Announcements
{
public:
    /** All outlive this object.
        @param onChange called after what is known has changed */
    Announcements (PluginModel& model,
                   MainWindow& main,
                   TopRow& buttons,
                   const WebHosts& hosts,
                   std::function<void()> onChange);

    /** Puts the link to the website into the window. */
    void addTo (juce::Component& window, juce::MouseListener& mouse);
    void place (const EditorLayout& layout);

    /** Asks the maker's server, if this instance has not yet. */
    void askOnce() { news.askOnce(); }

    /** Shows what is known by now. */
    void show();

    /** The pointer has come over a part of the window, or left it. */
    void followEnter (const juce::Component* entered);
    void followExit();

    [[nodiscard]] WebsiteLink& website() noexcept { return link; }

private:
    PluginModel& model;
    MainWindow& mainWindow;
    TopRow& topRow;
    WebsiteLink link;
    const std::function<void()> tell;
    MakersNews news;

    JUCE_DECLARE_NON_COPYABLE (Announcements)
};
