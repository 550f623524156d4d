#pragma once

#include "describing/Field.h"
#include "rendering/Page.h"

#include <string>

namespace inspect {

/// Whether a field holds others: a list or an object.
bool isNested(const Field& field);

/// What stands behind the name of a field that is not nested: "1 behind UTC", "10800 s = -03:00".
std::string valueText(const Field& field, const Style& style);

} // namespace inspect
