#pragma once

#include "TISDBTTable.h"
#include "describing/Conventions.h"
#include "describing/Field.h"

namespace inspect {

/// The fields of a parsed table, descriptors included, without those of the section header.
/// @param conventions how its texts and times are written
Fields describe(const Quor::TISDBTTable& table, const Conventions& conventions = Conventions());

/// The same for a single descriptor: an object under its name.
Field describe(const Quor::TISDBTDescriptor& descriptor, const Conventions& conventions = Conventions());

} // namespace inspect
