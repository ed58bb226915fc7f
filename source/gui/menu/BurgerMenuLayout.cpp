#include "gui/menu/BurgerMenuLayout.h"

namespace
{
using Area = BurgerMenuLayout::Area;

/** Above these rates in hertz the phase is always linear: its toggle is off, and then gone. */
constexpr double highestRateOfPhase = 172000.0;
constexpr double leastRateWithoutPhase = 176000.0;

constexpr int rightEdgeFromParent = 42;
constexpr int labelHeight = 20;
constexpr int buttonHeight = 30;
constexpr int toggleWidth = 90;

/** A column of full buttons and rows, from the top down. */
class Column
{
public:
    explicit Column (int top) : y (top) {}

    Area take (int x, int width, int height, int step)
    {
        const Area area (x, y, width, height);
        y += step;
        return area;
    }

    Area button (int step) { return take (BurgerMenuLayout::left, BurgerMenuLayout::buttonWidth, buttonHeight, step); }
    [[nodiscard]] Area beside (int x, int width, int height) const { return { x, y, width, height }; }
    void skip (int step) { y += step; }
    [[nodiscard]] int bottom() const { return y; }

private:
    int y;
};

void placeToggles (BurgerMenuLayout& layout, Column& column, bool withPhase)
{
    constexpr int labelStep = 25;
    constexpr int toggleStep = 35;
    constexpr int rightColumn = 125;
    constexpr int middle = 70;
    const auto modeX = withPhase ? rightColumn : middle;

    if (withPhase)
        layout.phaseLabel = column.beside (BurgerMenuLayout::left, toggleWidth, labelHeight);

    layout.modeLabel = column.take (modeX, toggleWidth, labelHeight, labelStep);

    if (withPhase)
        layout.phaseButton = column.beside (BurgerMenuLayout::left, toggleWidth, buttonHeight);

    layout.modeButton = column.take (modeX, toggleWidth, buttonHeight, toggleStep);
}

void placeTargetCommands (BurgerMenuLayout& layout, Column& column, const BurgerMenuLayout::Situation& situation)
{
    constexpr int step = 35;

    if (situation.targetShown || situation.transportRuns)
        layout.resetTargets = column.button (step);

    if (situation.targetShown && situation.smartBandsReady)
        layout.addSmartBands = column.button (step);
}

void placeNumbers (BurgerMenuLayout& layout, Column& column)
{
    constexpr int labelX = 12;
    constexpr int labelStep = 25;
    constexpr int rowStep = 35;
    constexpr int size = 25;
    constexpr int distance = 28;

    layout.width = BurgerMenuLayout::widePanelWidth;
    layout.addBandsLabel = column.take (labelX, toggleWidth, labelHeight, labelStep);

    for (std::size_t i = 0; i < layout.numbers.size(); ++i)
        layout.numbers[i] = column.beside (BurgerMenuLayout::left + distance * static_cast<int> (i), size, size);

    column.skip (rowStep);
}

int layOutMenu (BurgerMenuLayout& layout, const BurgerMenuLayout::Situation& situation)
{
    constexpr int top = 10;
    constexpr int deleteStep = 40;

    Column column (top);
    placeToggles (layout, column, situation.sampleRate < leastRateWithoutPhase);
    placeTargetCommands (layout, column, situation);

    if (situation.anyBandActive)
        layout.deleteAllBands = column.button (deleteStep);
    else
        placeNumbers (layout, column);

    layout.phaseEnabled = situation.sampleRate < highestRateOfPhase;
    layout.modeEnabled = situation.canUseMasterMode || situation.masterMode;
    return column.bottom();
}

int layOutOffer (BurgerMenuLayout& layout)
{
    constexpr int top = 20;
    constexpr int step = 40;

    Column column (top);
    layout.addSmartBands = column.button (step);
    return column.bottom();
}

int layOutMessage (BurgerMenuLayout& layout, int height)
{
    constexpr int top = 15;

    Column column (top);
    layout.message = column.take (BurgerMenuLayout::left, BurgerMenuLayout::buttonWidth, height, height);
    return column.bottom();
}
} // namespace

BurgerMenuLayout BurgerMenuLayout::of (const Situation& situation)
{
    BurgerMenuLayout layout;

    switch (situation.state)
    {
        case State::smartBands:
            layout.height = layOutOffer (layout);
            break;
        case State::menu:
            layout.height = layOutMenu (layout, situation);
            break;
        case State::message:
            layout.height = layOutMessage (layout, situation.messageHeight);
            break;
    }

    return layout;
}

BurgerMenuLayout::Area BurgerMenuLayout::panelIn (int parentWidth) const
{
    // The right edge stays where it is when the panel widens.
    return { parentWidth - rightEdgeFromParent - width, 0, width, height };
}
