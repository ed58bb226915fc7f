#include "window/HandTest.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace
{
/** Of the bands 1 to 10. */
constexpr std::array<std::uint32_t, 10> bandColours { 0x008b79, 0x8200a3, 0xfc7900, 0x00b0cd, 0x0029a9,
                                                      0x06a300, 0xffd900, 0xe00044, 0x66b800, 0xfa2a00 };

/** The plain figure of a normalised value. */
double plain (const std::string& parameterName, double value)
{
    if (parameterName.ends_with ("Gain"))
        return std::round ((value * 24.0 - 12.0) * 10.0) / 10.0;

    if (parameterName.ends_with ("Q"))
        return std::round ((value * 4.5 + 0.5) * 10.0) / 10.0;

    if (parameterName.ends_with ("Frequency"))
        return std::round ((std::pow (value, 1.0 / 0.3) * 19680.0 + 320.0) / 10.0) * 10.0;

    return value;
}

bool areNear (std::uint32_t colour, std::uint32_t other)
{
    constexpr int tolerance = 4;

    for (const auto shift : { 0, 8, 16 })
        if (std::abs (static_cast<int> (colour >> shift & 0xff) - static_cast<int> (other >> shift & 0xff)) > tolerance)
            return false;

    return true;
}
} // namespace

HandTest::HandTest (bool managed) : window (48000.0, managed)
{
    window.setNormalised ("Mix/Master Mode", 1.0f);
    idleFor (100);
}

HandTest::~HandTest()
{
    window.release();

    for (const auto* key : { "Control_L", "Shift_L", "Alt_L" })
        window.keyUp (key);
}

void HandTest::hangAndSee (int number, const HungBand& band)
{
    hang (window, number, band);

    // The row where the line runs, by the room's perspective.
    constexpr double height = 622.0;
    constexpr double halfDepth = 60.0;
    const auto farRow = height - std::log10 (band.frequencyHz / 320.0) * height / std::log10 (20000.0 / 320.0);
    const auto sight = (1.0 - 2.0 * farRow / height) * std::atan (1.0);
    const auto row = farRow + std::tan (sight) * (1.0 - band.gainDb / 12.0) * halfDepth;

    if (! window.eventually ([&] { return showsLine (number, static_cast<int> (row)); }))
        throw std::runtime_error ("a band does not show");

    window.host().takeEdits();
}

void HandTest::reachBehindWithCtrl()
{
    hangAndSee (2, { 1200.0 });
    hangAndSee (1, { 1000.0, 6.0 });
    moveTo (100, hiddenLine + 20);
    idleFor (50);
    window.keyDown ("Control_L");
    moveTo (100, hiddenLine);
    idleFor (50);
}

bool HandTest::showsLine (int number, int row)
{
    constexpr int besideTheWall = 130;
    const auto picture = window.look();

    for (auto y = row - 2; y <= row + 2; ++y)
        if (areNear (picture.at (roomX + besideTheWall, roomY + y),
                     bandColours.at (static_cast<std::size_t> (number) - 1)))
            return true;

    return false;
}

bool HandTest::showsColour (int x, int y, std::uint32_t colour)
{
    return areNear (window.look().at (x, y), colour);
}

bool HandTest::showsPanel (int row)
{
    constexpr int betweenButtonAndReadout = 281;
    return showsColour (roomX + betweenButtonAndReadout, roomY + row, bandPanel);
}

bool HandTest::showsMessage()
{
    constexpr std::uint32_t panel = 0x111416;
    return showsColour (window.size().width - 270, roomY + 14, panel);
}

HandTest::Told HandTest::told (const std::string& parameterName)
{
    const auto index = window.host().findParameter (parameterName);
    Told all;

    for (const auto& edit : window.host().takeEdits())
    {
        if (edit.index != index)
            continue;

        if (edit.kind == Vst2Host::Edit::Kind::begin)
            ++all.begins;
        else if (edit.kind == Vst2Host::Edit::Kind::end)
            ++all.ends;
        else
            all.changes.push_back (plain (parameterName, edit.value));
    }

    return all;
}

std::vector<double>
HandTest::stroke (const std::string& parameterName, int column, int fromRow, int toRow, int events, std::size_t changes)
{
    press (column, fromRow);
    window.eventually ([&] { return told (parameterName).begins > 0; }, std::chrono::seconds (5));
    const auto place = window.screen().placeOf (window.handle());

    for (int event = 1; event <= events; ++event)
        window.screen().point (place.x + roomX + column,
                               place.y + roomY + fromRow + (toRow - fromRow) * event / events);

    std::vector<double> figures;
    window.eventually (
        [&]
        {
            const auto more = told (parameterName).changes;
            figures.insert (figures.end(), more.begin(), more.end());
            return figures.size() >= changes;
        },
        std::chrono::seconds (5));

    // A hand that rests goes on to where it is.
    figures.resize (std::min (figures.size(), changes));
    return figures;
}

void HandTest::letGo()
{
    window.release();
    idleFor (150);
}

bool HandTest::comesTo (const std::string& parameterName, double figure, double tolerance)
{
    return window.eventually ([&] { return std::abs (window.figure (parameterName) - figure) <= tolerance; },
                              std::chrono::seconds (5));
}

void HandTest::waitForRest()
{
    do
    {
        window.host().takeEdits();
        idleFor (200);
    } while (! window.host().takeEdits().empty());
}
