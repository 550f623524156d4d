#pragma once

#include "describing/Field.h"
#include "text/Page.h"

#include <string>

namespace inspect {

/// What stands behind the name of a field that is not nested: "1 behind UTC", "10800 s = -03:00".
std::string valueText(const Field& field, const Style& style);

} // namespace inspect
