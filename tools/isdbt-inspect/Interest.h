#pragma once

#include "reports/Report.h"
#include "watching/Profile.h"

#include <set>

namespace inspect {

/// What of an input is of interest.
struct Interest {
    PidSet pids;                    ///< to look at beside those that are signalled
    std::set<std::uint8_t> tables;  ///< the table_id of those to show; all when there is none
    std::set<std::uint8_t> without; ///< the table_id of those not to show

    // Which of their sections are shown. The others are followed and checked all the same.
    std::set<std::uint16_t> extensions; ///< with one of these table_id_extensions; any when there is none
    std::set<std::uint8_t> versions;    ///< with one of these version_numbers; any when there is none
    bool rejected = false;              ///< those alone that the library rejects, and the damaged ones of packets
    bool damaged = false;               ///< those of packets whose CRC_32 is wrong, too
    std::optional<double> since;        ///< in seconds of the stream's clock
    std::optional<double> until;

    Profile limits = Profile::always(); ///< that it is held to

    bool carousels = false; ///< they are put together, too

    ReceiverProfiles receiver; ///< none when it is not known which the receiver has

    bool bytes = false; ///< those of sections that are taken are shown, too

    bool isOf(std::uint8_t tableId) const {
        return (tables.empty() || tables.count(tableId) != 0) && without.count(tableId) == 0;
    }

    /// Whether some sections of these tables are not to be shown.
    bool isChoosy() const;

    /// Whether it depends on when a section comes.
    bool isTimed() const { return since || until; }

    /// Whether that is not too early. Before the stream's clock is known, its time has just begun.
    bool hasBegun(const Position& position) const { return position.seconds.value_or(0) >= since.value_or(0); }

    /// Whether to show a section of one of these tables.
    bool chooses(const SectionReport& report) const;
};

} // namespace inspect
