#include "dsp/filters/BiQuad.h"

namespace orvik
{
template class BiQuad<float>;
template class BiQuad<double>;
} // namespace orvik
