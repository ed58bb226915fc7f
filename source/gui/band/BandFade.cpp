#include "gui/band/BandFade.h"

bool BandFade::tick() noexcept
{
    if (settled())
        return false;

    step += step < target ? 1 : -1;
    return true;
}
