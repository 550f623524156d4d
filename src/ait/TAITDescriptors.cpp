#include "ait/TAITFamily.h"

namespace Quor {

TAITDescriptors::TAITDescriptors() = default;
TAITDescriptors::~TAITDescriptors() = default;

} // namespace Quor
