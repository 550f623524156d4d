#pragma once

#include "describing/Catalogue.h"
#include "describing/Describing.h"
#include "tool/describing/Taken.h"

/// Fields as lines: "stream_type 0x1B (H.264 video)", "local_time_offset 10800 s = -03:00". Those of an object or of an
/// element are indented by two under its name or under "-".
Lines linesOf(const inspect::Fields& fields);

/// What is said of one descriptor that the library takes, below its name.
template <class Descriptor> Lines described(const std::string& wire) {
    const auto taken = takenDescriptor<Descriptor>(hex(wire));
    return taken.object == nullptr ? Lines{"refused"}
                                   : linesOf({inspect::Catalogue::instance().describe(*taken.object)});
}

/// What is said of a section that the library takes.
template <class Table> Lines describedTable(const ByteVector& section) {
    const auto taken = takenSection<Table>(section);
    return taken.object == nullptr ? Lines{"refused"} : linesOf(inspect::describe(*taken.object));
}
