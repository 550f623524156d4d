#include "pat/TProgramAssociation.h"

namespace Quor {

TProgramAssociation::~TProgramAssociation() = default;

} // namespace Quor
