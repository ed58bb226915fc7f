#include "gui/band/MidSideLink.h"

#include "gui/band/MidSideControlPanel.h"

MidSideLink::MidSideLink (const BandState& state, IBandSurroundings& surroundings) : band (state), room (surroundings)
{
}

MidSideLink::~MidSideLink()
{
    if (auto* const panel = served())
    {
        panel->onUse = nullptr;
        panel->onLeft = nullptr;
        panel->hideSoon();
    }
}

MidSideControlPanel* MidSideLink::served() const
{
    auto* const panel = room.midSidePanel();
    return panel != nullptr && panel->servedBand() == band.band ? panel : nullptr;
}

void MidSideLink::show (const juce::Component& touched,
                        bool above,
                        std::function<void (bool)> onUse,
                        std::function<void()> onLeft)
{
    auto* const panel = room.midSidePanel();
    const auto* const home = touched.getParentComponent();

    if (panel == nullptr || home == nullptr || panel->getParentComponent() == nullptr || ! room.stereo()
        || ! band.usable() || band.layout.outOfScale)
        return;

    const auto area = panel->getParentComponent()->getLocalArea (home, touched.getBounds());
    panel->setTopLeftPosition (area.getCentreX() - MidSideControlPanel::panelWidth / 2,
                               above ? area.getY() - MidSideControlPanel::panelHeight : area.getBottom());
    panel->onUse = std::move (onUse);
    panel->onLeft = std::move (onLeft);
    panel->showFor (band.band, band.midSide);
}

void MidSideLink::hide()
{
    if (auto* const panel = served())
        panel->hideSoon();
}

void MidSideLink::follow()
{
    if (auto* const panel = served())
        panel->setValue (band.midSide);
}

bool MidSideLink::write (float value)
{
    auto* const panel = served();

    if (panel != nullptr)
        panel->setTo (value);

    return panel != nullptr;
}

bool MidSideLink::isInUse() const
{
    const auto* const panel = served();
    return panel != nullptr && panel->isInUse();
}
