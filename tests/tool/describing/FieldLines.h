#pragma once

#include "describing/Describing.h"
#include "describing/FieldLookup.h"
#include "describing/StandardReadings.h"
#include "tool/describing/Taken.h"

/// Fields as lines: "stream_type 0x1B (H.264 video)", "local_time_offset 10800 s = -03:00". Those of an object or of an
/// element are indented by two under its name or under "-".
Lines linesOf(const inspect::Fields& fields);

/// What the library says of one descriptor that it takes, below its name; without the standard's reading.
template <class Descriptor> Lines described(const std::string& wire) {
    const auto taken = takenDescriptor<Descriptor>(hex(wire));
    if (taken.object == nullptr) {
        return {"refused"};
    }
    inspect::Field field = inspect::describe(*taken.object);
    inspect::take(std::get<inspect::Object>(field.value).fields, inspect::STANDARD);
    return linesOf({field});
}

/// What is said of a section that the library takes.
template <class Table> Lines describedTable(const ByteVector& section) {
    const auto taken = takenSection<Table>(section);
    return taken.object == nullptr ? Lines{"refused"} : linesOf(inspect::describe(*taken.object));
}
