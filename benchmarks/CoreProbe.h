#pragma once

/** Tells whether somebody else shares the core. Two threads of one core share how many instructions it begins in a
    cycle: many that are independent then take longer, while those that wait for each other take as long as before. */
namespace CoreProbe
{
/** Steps of two short instructions, each of which waits for the one before. */
void runOneChain (int stepCount) noexcept;

/** As many steps in eight chains side by side: more than any core can begin at once. `stepCount` is a multiple of 8. */
void runEightChains (int stepCount) noexcept;
} // namespace CoreProbe
