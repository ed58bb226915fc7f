#pragma once

namespace GraphicsCard
{
/** Whether the X display has a renderer that draws on a graphics card. One that draws on the processor is no help to a
    window whose pictures are made there anyway. Opens a connection of its own for the question, once in the life
    of the process. Message thread. */
[[nodiscard]] bool isThere();
} // namespace GraphicsCard
