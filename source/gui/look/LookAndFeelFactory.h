#pragma once

#include "core/model/PluginModel.h"
#include "gui/look/VelmoraLookandFeel.h"

/** The look and feel of an instance, made when its window first opens and kept by the model, so that fonts survive the
    window. Message thread. */
[[nodiscard]] VelmoraLookandFeel& lookAndFeelOf (PluginModel& model);
