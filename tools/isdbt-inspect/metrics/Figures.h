#pragma once

#include "checking/Fault.h"
#include "reports/Report.h"

#include <chrono>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace inspect {

using Labels = std::vector<std::pair<std::string, std::string>>;

/// A value of a metric.
struct Figure {
    Labels labels;
    double value;
};

/// All values of a metric.
struct Metric {
    std::string name;
    std::string help;
    bool isCounter; ///< else it may fall, too
    std::vector<Figure> figures;
};

/// What came of one input, for who looks at it from time to time.
class Figures {
public:
    using Time = std::chrono::system_clock::time_point;

    explicit Figures(std::string source) : m_source(std::move(source)) {}

    void update(const Summary& summary, bool ended, Time now);

    /// An alarm began, or ended.
    void alarm(std::string_view check, const FaultPlace& place, bool isActive);

    /// Adds them to the metrics of all inputs.
    void addTo(std::vector<Metric>& metrics) const;

private:
    using TableOfPid = std::pair<std::optional<Pid>, std::uint8_t>;

    /// A count, and when it last went up.
    struct Seen {
        std::uint64_t count = 0;
        std::optional<Time> at;

        void update(std::uint64_t now, Time when);
    };

    /// What tells alarms apart; those of the table_id_extensions of a table are one.
    struct Alarmed {
        std::string check;
        std::optional<Pid> pid;
        std::optional<std::uint8_t> tableId;

        bool operator<(const Alarmed& other) const {
            return std::tie(check, pid, tableId) < std::tie(other.check, other.pid, other.tableId);
        }
    };

    void updateRate(const Summary& summary);
    Labels labels(std::optional<Pid> pid = std::nullopt, std::optional<std::uint8_t> tableId = std::nullopt) const;

    std::string m_source;
    Summary m_summary{};
    bool m_ended = false;
    Seen m_packets;
    std::map<TableOfPid, Seen> m_tables;
    std::optional<double> m_bitRate;
    std::map<Alarmed, std::set<std::optional<std::uint16_t>>> m_alarms; ///< the table_id_extensions that are at fault
};

/// The metrics that there are, without figures.
std::vector<Metric> metrics();

} // namespace inspect
