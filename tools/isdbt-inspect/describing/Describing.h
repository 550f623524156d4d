#pragma once

#include "TISDBTTable.h"
#include "describing/CodingGuess.h"
#include "describing/Conventions.h"
#include "describing/Field.h"

namespace inspect {

/// The fields of a parsed table, descriptors included, without those of the section header.
/// @param conventions how its texts and times are written
/// @param guess       what its stream's tables tell of that; learns from this one
Fields describe(const Quor::TISDBTTable& table, const Conventions& conventions, CodingGuess& guess);

/// The same for a table whose stream is not known.
Fields describe(const Quor::TISDBTTable& table, const Conventions& conventions = Conventions());

/// The same for a single descriptor: an object under its name.
Field describe(const Quor::TISDBTDescriptor& descriptor, const Conventions& conventions = Conventions());

/// The clock by which its times are read: where nobody set one and the texts are of Japan, that of Japan.
TimeZone zoneOf(const Conventions& conventions, const CodingGuess& guess);

} // namespace inspect
