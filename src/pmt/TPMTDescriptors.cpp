#include "pmt/TPMTDescriptors.h"

#include "pmt/TPMTFamily.h"

namespace Quor {

TPMTDescriptors::TPMTDescriptors() = default;
TPMTDescriptors::~TPMTDescriptors() = default;

} // namespace Quor
