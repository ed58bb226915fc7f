#include "gui/settings/SettingsWindow.h"

#include "gui/look/Fonts.h"
#include "gui/look/Icons.h"
#include "gui/look/Palette.h"
#include "gui/look/PanelShape.h"

namespace
{
constexpr int left = 30;
constexpr int labelHeight = 20;
constexpr int switchFromRight = 240;
constexpr int switchWidth = 59;
constexpr int switchHeight = 30;
constexpr float titleFontHeight = 16.0f;
constexpr float labelFontHeight = 15.0f;

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
    : model (shared), switches (makeSwitches (std::make_index_sequence<switchCount>()))
{
    using Icons::Role;
    using Icons::svg;

    setTitle ("Settings");
    prepareLabel (title, "SETTINGS", Fonts::bold (titleFontHeight));

    for (std::size_t i = 0; i < rows.size(); ++i)
    {
        prepareLabel (labels[i], rows[i].label, Fonts::regular (labelFontHeight));
        switches[i].setImages (
            svg (Role::switchOff), svg (Role::switchOffDown), svg (Role::switchOn), svg (Role::switchOnDown));
        switches[i].setTitle (rows[i].label);
        switches[i].addListener (this);
        addAndMakeVisible (switches[i]);
    }

    closeButton.setImages (svg (Role::close), svg (Role::closeOver), svg (Role::closeDown));
    closeButton.addListener (this);
    addAndMakeVisible (closeButton);
    readSwitches();
}

void SettingsWindow::prepareLabel (juce::Label& label, const juce::String& text, const juce::Font& font)
{
    label.setText (text, juce::dontSendNotification);
    label.setFont (font);
    label.setColour (juce::Label::textColourId, juce::Colour (Palette::menuText));
    label.setBorderSize ({});
    label.setInterceptsMouseClicks (false, false);
    addAndMakeVisible (label);
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
    // A window that is made higher is no longer at its least height.
    readSwitches();
}

void SettingsWindow::buttonClicked (juce::Button* button)
{
    if (button == &closeButton)
    {
        setVisible (false);
        sendActionMessage (closed);
        return;
    }

    for (std::size_t i = 0; i < rows.size(); ++i)
        if (button == &switches[i])
            rows[i].write (model, button->getToggleState());

    if (onSwitched)
        onSwitched();
}

void SettingsWindow::resized()
{
    constexpr int titleY = 40;
    constexpr int titleWidth = 100;
    constexpr int closeFromRight = 105;
    constexpr int closeY = 420;
    constexpr int closeWidth = 77;
    constexpr int closeHeight = 34;

    title.setBounds (left, titleY, titleWidth, labelHeight);

    for (std::size_t i = 0; i < rows.size(); ++i)
    {
        labels[i].setBounds (left, rows[i].y, rows[i].labelWidth, labelHeight);
        switches[i].setBounds (getWidth() - switchFromRight, rows[i].y, switchWidth, switchHeight);
    }

    closeButton.setBounds (getWidth() - closeFromRight, closeY, closeWidth, closeHeight);
}

void SettingsWindow::paint (juce::Graphics& g)
{
    PanelShape::drawPage (g, getLocalBounds());
}
