#pragma once

#include "sections/Section.h"
#include "tables/TableKinds.h"

#include <limits>
#include <tuple>

namespace inspect {

/// A table: the sections of one PID, table_id and table_id_extension.
struct TableKey {
    std::optional<Pid> pid; ///< nothing when it did not come in packets
    std::uint8_t tableId;
    std::uint16_t extension; ///< 0 for one with the short header

    bool operator<(const TableKey& other) const {
        return std::tie(tableId, extension, pid) < std::tie(other.tableId, other.extension, other.pid);
    }
};

/// A place in a table. The next version of a table is announced beside the current one.
struct Place {
    TableKey table;
    std::uint8_t sectionNumber; ///< 0 in a table with the short header
    bool current = true;

    /// @param header of the section; nothing when it is the short one
    static Place of(std::optional<Pid> pid, std::uint8_t tableId, const std::optional<LongHeader>& header) {
        return header ? Place{{pid, tableId, header->extension}, header->sectionNumber, header->current}
                      : Place{{pid, tableId, 0}, 0};
    }

    /// There is one PAT: another transport_stream_id takes the place of the former.
    Place inTheOnlyPat() const {
        Place place = *this;
        place.table.extension = table.tableId == PAT ? std::uint16_t{0} : table.extension;
        return place;
    }

    /// The last place that there could be in its table.
    Place last() const { return {table, std::numeric_limits<std::uint8_t>::max(), current}; }

    bool operator<(const Place& other) const { return order() < other.order(); }
    bool operator==(const Place& other) const { return order() == other.order(); }

private:
    std::tuple<const std::optional<Pid>&, std::uint8_t, std::uint16_t, bool, std::uint8_t> order() const {
        return {table.pid, table.tableId, table.extension, current, sectionNumber};
    }
};

/// What a map keyed by places has behind one of them in its table: sections that the table has no more.
template <class Map> auto behind(Map& map, const Place& place) {
    return std::pair(map.upper_bound(place), map.upper_bound(place.last()));
}

} // namespace inspect
