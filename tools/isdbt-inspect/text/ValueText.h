#pragma once

#include "describing/Field.h"
#include "terminal/Line.h"

#include <vector>

namespace inspect {

/// What stands behind the name of a field that is not nested: "1 behind UTC", "10800 s = -03:00".
Line valueText(const Field& field);

/// The name of an object; of a descriptor with its tag: "transport_protocol_descriptor (0x02, inherited)".
Line headingOf(const Field& object);

/// Its other fields, those of the standard first.
Fields besideHeading(const Fields& fields);

/// A value as briefly as a person wants it: "H.264 video (0x1B)", "587.142857 MHz". What is nested stands in braces.
Line briefText(const Field& field);

/// Fields in one line, each behind its name, in pieces that had better stay together. The elements of a list are pieces
/// of their own.
std::vector<Line> briefPieces(const Fields& fields);

} // namespace inspect
