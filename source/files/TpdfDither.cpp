#include "files/TpdfDither.h"

double TpdfDither::even() noexcept
{
    state += 0x9e3779b97f4a7c15u;
    auto mixed = state;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebu;
    mixed ^= mixed >> 31;
    return static_cast<double> (mixed >> 11) * 0x1.0p-53;
}
