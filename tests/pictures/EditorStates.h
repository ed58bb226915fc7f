#pragma once

#include "pictures/EditorStage.h"

#include <functional>
#include <vector>

/** What the window can show, and how it gets there. */
struct EditorState
{
    /** The first part of its pictures' names. */
    const char* name;

    std::function<void (EditorStage&)> reach;
};

[[nodiscard]] const std::vector<EditorState>& editorStates();
