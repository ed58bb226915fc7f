#include "gui/settings/SettingsWindow.h"

#include "gui/look/Icons.h"

namespace
{
constexpr int left = 30;
constexpr int labelHeight = 20;
constexpr int switchFromRight = 240;
constexpr int switchWidth = 59;
constexpr int switchHeight = 30;

/** One switch: where it stands, what it is called, and what it switches. */
struct Row
{
    int y;
    const char* label;
    int labelWidth;
    const char* name;
    bool (*read) (const PluginModel&);
    void (*write) (PluginModel&, bool);
};

constexpr std::array<Row, SettingsWindow::switchCount> rows { {
    { 70,
      "Show tool tips",
      200,
      "Tool Tips",
      [] (const PluginModel& model) { return model.showToolTips.load(); },
      [] (PluginModel& model, bool on) { model.showToolTips = on; } },
    { 110,
      "Reverse mousewheel action",
      200,
      "Reverse Mousewheel",
      [] (const PluginModel& model) { return model.reverseMousewheel.load(); },
      [] (PluginModel& model, bool on) { model.reverseMousewheel = on; } },
    { 150,
      "Always show band",
      200,
      "Show band",
      [] (const PluginModel& model) { return model.alwaysShowBand.load(); },
      [] (PluginModel& model, bool on) { model.alwaysShowBand = on; } },
    { 190,
      "Show frequency heatmaps",
      200,
      "Heatmap",
      [] (const PluginModel& model) { return model.showHeatmap(); },
      [] (PluginModel& model, bool on) { model.setShowHeatmap (on); } },
    { 230,
      "Show EQ notifications",
      200,
      "Notification",
      [] (const PluginModel& model) { return model.showNotifications.load(); },
      [] (PluginModel& model, bool on) { model.showNotifications = on; } },
    { 270,
      "Set plugin window to minimum height",
      250,
      "Minimise",
      [] (const PluginModel& model) { return model.minimised(); },
      [] (PluginModel& model, bool on) { model.setMinimised (on, true); } },
} };

template <std::size_t... Index>
std::array<orvik::SVGCheckbox, sizeof...(Index)> makeSwitches (std::index_sequence<Index...>)
{
    return { orvik::SVGCheckbox (rows[Index].name)... };
}
} // namespace

SettingsWindow::SettingsWindow (PluginModel& shared)
    : OverlayPage ("SETTINGS", 100, closed),
      model (shared),
      switches (makeSwitches (std::make_index_sequence<switchCount>()))
{
    using Icons::Role;
    using Icons::svg;

    for (std::size_t i = 0; i < rows.size(); ++i)
    {
        addText (labels[i], rows[i].label, { left, rows[i].y, rows[i].labelWidth, labelHeight });
        switches[i].setImages (
            svg (Role::switchOff), svg (Role::switchOffDown), svg (Role::switchOn), svg (Role::switchOnDown));
        switches[i].setTitle (rows[i].label);
        switches[i].addListener (this);
        switches[i].setBounds (pageWidth - switchFromRight, rows[i].y, switchWidth, switchHeight);
        addAndMakeVisible (switches[i]);
    }

    readSwitches();
}

void SettingsWindow::readSwitches()
{
    for (std::size_t i = 0; i < rows.size(); ++i)
        switches[i].setToggleState (rows[i].read (model), juce::dontSendNotification);
}

void SettingsWindow::visibilityChanged()
{
    if (isVisible())
        readSwitches();
}

void SettingsWindow::moved()
{
    OverlayPage::moved();

    // A window that is made higher is no longer at its least height.
    readSwitches();
}

void SettingsWindow::buttonClicked (juce::Button* button)
{
    if (button == &close())
    {
        setVisible (false);
        return OverlayPage::buttonClicked (button);
    }

    for (std::size_t i = 0; i < rows.size(); ++i)
        if (button == &switches[i])
            rows[i].write (model, button->getToggleState());

    if (onSwitched)
        onSwitched();
}
