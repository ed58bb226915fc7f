#include "gui/band/BandActions.h"

BandActions::BandActions (const BandState& state,
                          const BandCallbacks& bound,
                          BandHand& writer,
                          BandTyping& typed,
                          MidSideLink& link)
    : band (state), callbacks (bound), hand (writer), typing (typed), midSide (link)
{
}

void BandActions::toggleSolo()
{
    if (band.usable())
        callbacks.onSolo (band.band, ! band.solo);
}

void BandActions::toggleBypass()
{
    if (! band.mainBypassed && ! band.dimmed && ! band.solo)
        callbacks.onBypass (band.band, ! band.bypassed);
}

void BandActions::toggleShelf()
{
    if (band.upperHalf && band.usable())
        callbacks.onHighShelf (band.band, ! band.highShelf);
}

void BandActions::close()
{
    if (band.usable())
        callbacks.onClose (band.band);
}

std::optional<ReadoutQuantity> BandActions::step (const BandKey& key)
{
    using Action = BandKey::Action;

    if (! band.usable())
        return std::nullopt;

    if (key.action == Action::frequency)
    {
        hand.setFrequency (BandStep::frequency (band.frequencyHz, key));
        return ReadoutQuantity::frequency;
    }

    if (key.action == Action::q)
    {
        hand.setQ (BandStep::q (band.q, key));
        return ReadoutQuantity::q;
    }

    if (key.action == Action::midSide)
        return midSide.write (BandStep::midSide (band.midSide, key)) ? std::optional (ReadoutQuantity::midSide)
                                                                     : std::nullopt;

    if (key.action != Action::gain || band.solo)
        return std::nullopt;

    typing.setGain (static_cast<double> (BandStep::gain (band.gainDb, key)));
    return ReadoutQuantity::gain;
}
