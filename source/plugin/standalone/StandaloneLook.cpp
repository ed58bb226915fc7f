#include "plugin/standalone/StandaloneLook.h"

#include "gui/look/Palette.h"

StandaloneLook::StandaloneLook() : LookAndFeel_V4 (scheme())
{
    setDefaultSansSerifTypeface (typefaces.regular);
    setDefaultLookAndFeel (this);
}

StandaloneLook::~StandaloneLook()
{
    setDefaultLookAndFeel (nullptr);
}

juce::LookAndFeel_V4::ColourScheme StandaloneLook::scheme()
{
    using UI = ColourScheme::UIColour;
    auto scheme = getDarkColourScheme();

    for (const auto& [role, colour] : { std::pair (UI::windowBackground, Palette::mainWindow),
                                        std::pair (UI::widgetBackground, Palette::barLight),
                                        std::pair (UI::menuBackground, Palette::menu),
                                        std::pair (UI::outline, Palette::panelOutline),
                                        std::pair (UI::defaultText, Palette::menuText),
                                        std::pair (UI::defaultFill, Palette::inactiveBand),
                                        std::pair (UI::highlightedText, Palette::menuText),
                                        std::pair (UI::highlightedFill, Palette::menuHighlight),
                                        std::pair (UI::menuText, Palette::menuText) })
        scheme.setUIColour (role, juce::Colour (colour));

    return scheme;
}
