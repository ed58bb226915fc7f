#pragma once

#include "window/PluginWindow.h"

#include <string>
#include <vector>

/** A file manager's side of a drop, as the desktop's protocol has it: says that files come, where the pointer is, that
    it has let go, and hands over their names when it is asked for them. */
class FileDrop
{
public:
    /** Drops files on a place of the plug-in's window. Throws std::runtime_error where nobody answers. */
    static void drop (PluginWindow& window, int x, int y, const std::vector<std::string>& paths);
};
