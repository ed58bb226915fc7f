#pragma once

// The extended interface has no header of its own here: see aeffect.h beside this file.
#include "pluginterfaces/vst2.x/aeffect.h"
