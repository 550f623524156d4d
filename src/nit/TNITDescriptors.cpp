#include "nit/TNITDescriptors.h"

#include "nit/TNITFamily.h"

namespace Quor {

TNITDescriptors::TNITDescriptors() = default;
TNITDescriptors::~TNITDescriptors() = default;

} // namespace Quor
