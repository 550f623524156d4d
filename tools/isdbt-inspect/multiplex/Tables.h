#pragma once

#include "multiplex/CurrentSections.h"
#include "reports/Fault.h"

#include <set>

namespace inspect {

/// What came of a table.
struct Table {
    TableKey key;
    std::vector<const TakenSection*> taken;
    std::vector<const RefusedSection*> refused;
    std::vector<Position> silentChanges; ///< where each section first changed without a new version

    /// What it says beside a list of entries: the fields of its first section, and the descriptors of all.
    Fields beside(std::string_view list) const;

    /// The elements of a list that goes on from section to section.
    std::vector<const Fields*> entries(std::string_view list) const;

    /// Whether it is known whole, so that what it does not say is not there.
    bool complete() const;

    /// The numbers of sections of which nothing is known.
    std::vector<unsigned> missingSections() const;
};

FaultPlace placeOf(const Table& table);

/// Where the first section of a table came.
std::optional<Position> sinceOf(const Table& table);

/// All that is known when the outline is put together. It refers to the sections.
class Tables {
public:
    /// @param expected tables that a multiplex has, and that are shown: where they are missing, that is said
    /// @param scrambled PIDs on which nothing came that can be read
    /// @param carried   PIDs on which anything came; nothing when that is not known of all
    /// @param crcErrors how many sections of a table on a PID had a wrong CRC_32
    explicit Tables(const CurrentSections& sections, std::set<std::uint8_t> expected = {}, std::set<Pid> scrambled = {},
                    std::optional<PidSet> carried = std::nullopt,
                    std::map<std::pair<Pid, std::uint8_t>, std::uint64_t> crcErrors = {});

    std::vector<const Table*> of(std::uint8_t tableId) const;
    std::vector<const Table*> of(std::uint8_t tableId, std::uint16_t extension) const;
    std::vector<const Table*> on(std::optional<Pid> pid, std::uint8_t tableId) const;

    bool expects(std::uint8_t tableId) const { return m_expected.count(tableId) != 0; }

    /// Whether a table is expected, and nothing of it came.
    bool misses(std::uint8_t tableId) const { return expects(tableId) && of(tableId).empty(); }

    bool isScrambled(Pid pid) const { return m_scrambled.count(pid) != 0; }

    /// Whether what did not come is missing: the stream is long enough, and all of it was looked at.
    bool areLong() const { return m_carried.has_value(); }

    /// How many sections of a table on a PID had a wrong CRC_32.
    std::uint64_t crcErrorsOn(Pid pid, std::uint8_t tableId) const {
        const auto found = m_crcErrors.find({pid, tableId});
        return found == m_crcErrors.end() ? 0 : found->second;
    }

    /// Whether nothing came on a PID.
    bool isSilent(Pid pid) const { return m_carried && !(*m_carried)[pid]; }

    /// Those of tables of which nothing is valid now.
    const std::vector<std::pair<TableKey, Position>>& silentChangesElsewhere() const {
        return m_silentChangesElsewhere;
    }

private:
    std::map<TableKey, Table> m_tables;
    std::vector<std::pair<TableKey, Position>> m_silentChangesElsewhere;
    std::set<std::uint8_t> m_expected;
    std::set<Pid> m_scrambled;
    std::optional<PidSet> m_carried;
    std::map<std::pair<Pid, std::uint8_t>, std::uint64_t> m_crcErrors;
};

} // namespace inspect
