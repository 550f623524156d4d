#pragma once

#include "TISDBTTable.h"
#include "describing/Field.h"

namespace inspect {

/// The fields of a parsed table, descriptors included, without those of the section header.
Fields describe(const Quor::TISDBTTable& table);

} // namespace inspect
