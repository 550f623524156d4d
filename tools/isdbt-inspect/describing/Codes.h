#pragma once

#include "QuorDefs.h"
#include "describing/Field.h"

namespace inspect {

// Codes that are read in more than one place.
Field serviceType(QUOR_U8 type);
Field numberOfCells(std::string_view name, QUOR_U8 number);
Field videoEncodeFormat(QUOR_U8 format);

} // namespace inspect
