#pragma once

#include "TISDBTTable.h"
#include "describing/Charset.h"
#include "describing/Field.h"

namespace inspect {

/// The fields of a parsed table, descriptors included, without those of the section header.
/// @param charset what its texts are in
Fields describe(const Quor::TISDBTTable& table, const Charset& charset = Charset());

/// The same for a single descriptor: an object under its name.
Field describe(const Quor::TISDBTDescriptor& descriptor, const Charset& charset = Charset());

} // namespace inspect
