#include "gui/band/PanelInUse.h"

#include <utility>

PanelInUse::PanelInUse (juce::Component& control,
                        const BandState& state,
                        IBandSurroundings& surroundings,
                        Listeners heard)
    : band (state), room (surroundings), listeners (heard)
{
    control.addChildComponent (own);
    attach (own);
}

PanelInUse::~PanelInUse()
{
    giveBack();
    detach (own);
}

SolvaneControlPanel& PanelInUse::get() noexcept
{
    return spare != nullptr ? *spare : own;
}

const SolvaneControlPanel& PanelInUse::get() const noexcept
{
    return spare != nullptr ? *spare : own;
}

void PanelInUse::attach (SolvaneControlPanel& panel)
{
    panel.setOwner (&listeners.owner);
    panel.readout.addListener (&listeners.readout);
    panel.addMouseListener (&listeners.mouse, true);
}

void PanelInUse::detach (SolvaneControlPanel& panel)
{
    panel.setOwner (nullptr);
    panel.readout.removeListener (&listeners.readout);
    panel.removeMouseListener (&listeners.mouse);
}

void PanelInUse::place (const juce::String& title, juce::Colour colour)
{
    own.setBounds (band.layout.panel);
    const auto wanted = band.layout.overlap;

    // The window may have taken its panel away, and have a new one by now.
    if (borrowedKind != wanted || (borrowedKind != OverlapPanel::none && spare == nullptr))
    {
        giveBack();
        borrow (wanted, title, colour);
    }

    if (spare != nullptr)
        spare->setBounds (overlapPanelBounds (borrowedKind, room.geometry(), band.layout.centreRow));
}

void PanelInUse::borrow (OverlapPanel kind, const juce::String& title, juce::Colour colour)
{
    auto* const free = kind == OverlapPanel::none ? nullptr : room.freeOverlapPanel (kind);

    if (free == nullptr)
        return;

    borrowedKind = kind;
    spare = free;
    room.setOverlapPanelInUse (kind, true);
    own.closeEditor();
    own.showAtOnce (false);
    attach (*free);
    free->setBand (band.band, title, band.gainDb, colour, band.upperHalf);
    refresh (colour);
}

void PanelInUse::giveBack()
{
    if (auto* const panel = spare.getComponent())
    {
        panel->closeEditor();
        panel->showAtOnce (false);
        detach (*panel);
        spare = nullptr;
    }

    if (const auto kind = std::exchange (borrowedKind, OverlapPanel::none); kind != OverlapPanel::none)
        room.setOverlapPanelInUse (kind, false);
}

void PanelInUse::refresh (juce::Colour colour)
{
    auto& panel = get();
    panel.showText (BandReadout::textOf (band, readoutQuantity),
                    readoutQuantity == ReadoutQuantity::midSide && ! band.solo);
    panel.setColour (colour);
    panel.setSolo (band.solo);
    panel.setBypass (band.bypassed);
    panel.setHighShelf (band.highShelf);
    panel.setShelfEnabled (band.upperHalf);
    panel.setEditable (band.usable() && ! band.solo);
}

void PanelInUse::show (bool wanted, bool clear)
{
    if (spare != nullptr)
        spare->showAtOnce (! room.overlayOpen() && (! clear || spare->isTyping()));
    else if (band.layout.outOfScale)
        own.showAtOnce (false);
    else
        own.setShown ((wanted && ! clear) || own.isTyping());
}

bool PanelInUse::borrowedIsUnderMouse() const
{
    return spare != nullptr && spare->isMouseOver (true);
}
