#pragma once

#include "app/AskedResponse.h"
#include "app/HeardResponse.h"

#include <string>
#include <vector>

/** Compares what is heard with what the bands ask for, and says in sentences where they part: where the bands leave
    nothing of a signal, or turn its polarity, and where a band misses its gain by more than 1 dB.

    @param leaveOutHighBands no word on the bands above 1500 Hz, of which it is known already that they do nothing */
[[nodiscard]] std::vector<std::string>
responseNotes (VelmoraAudioProcessor& processor, const HeardResponse& heard, bool leaveOutHighBands);
