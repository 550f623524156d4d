#include "json/RangeMerger.h"

#include "counting/Statistics.h"
#include "packets/WallClock.h"
#include "json/JsonValues.h"

#include <algorithm>
#include <fmt/format.h>
#include <set>

namespace inspect {

namespace {

using Json = nlohmann::ordered_json;

/// No line nests deeper.
constexpr int DEEPEST = 100;

/// So many statistics are of no range: there are fewer PIDs and tables.
constexpr std::size_t MOST_WAITING = 100000;

/// Members that are counts.
const std::set<std::string, std::less<>> COUNTS{"packets",
                                                "discontinuities",
                                                "announced_discontinuities",
                                                "packets_lost",
                                                "duplicates",
                                                "transport_errors",
                                                "scrambled",
                                                "pcrs",
                                                "pcr_jumps",
                                                "sections",
                                                "distinct",
                                                "version_changes",
                                                "crc_errors",
                                                "rejected",
                                                "rejected_distinct",
                                                "bytes",
                                                "bytes_skipped",
                                                "malformed_packets",
                                                "sections_cut_short",
                                                "input_losses"};

/// Members that say how long something took.
const std::set<std::string, std::less<>> SPREADS{"intervals", "pcr_intervals", "pts_intervals"};

Json parsed(const std::string& line) {
    const auto limit = [](int depth, Json::parse_event_t /*event*/, Json& /*value*/) {
        if (depth > DEEPEST) {
            throw MergeError("nests too deep");
        }
        return true;
    };
    Json object = Json::parse(line, limit);
    if (!object.is_object()) {
        throw MergeError("is no object");
    }
    return object;
}

bool isStatistics(std::string_view type) {
    return type == "pid_statistics" || type == "table_statistics" || type == "stream";
}

/// Of a line as it was written; empty when it has been written anew.
std::string_view typeOf(std::string_view line) {
    constexpr std::string_view BEGIN = R"({"type":")";
    return line.substr(0, BEGIN.size()) == BEGIN
               ? line.substr(BEGIN.size(), line.find('"', BEGIN.size()) - BEGIN.size())
               : std::string_view();
}

/// What the statistics are of.
std::string keyOf(const Json& object) {
    const auto member = [&object](const char* name) { return object.contains(name) ? object[name].dump() : ""; };
    return member("type") + ' ' + member("pid") + ' ' + member("table_id");
}

std::uint64_t sum(const Json& one, const Json& other) {
    return one.get<std::uint64_t>() + other.get<std::uint64_t>();
}

/// Of several longest ones the first in the stream counts.
bool hasLongest(const Json& one, const Json& other) {
    const auto longest = one.at("maximum").get<double>();
    const auto otherLongest = other.at("maximum").get<double>();
    const auto packet = [](const Json& each) { return each.at("longest").at("packet").get<std::uint64_t>(); };
    return longest > otherLongest || (longest == otherLongest && packet(one) < packet(other));
}

void addSpread(Json& spread, const Json& before) {
    if (before.at("count") == 0) {
        return;
    }
    if (spread.at("count") == 0) {
        spread = before;
        return;
    }
    if (hasLongest(before, spread)) {
        spread["longest"] = before.at("longest");
    }
    spread["count"] = sum(spread["count"], before.at("count"));
    spread["sum"] = measured(spread.at("sum").get<double>() + before.at("sum").get<double>());
    spread["minimum"] = std::min(spread.at("minimum").get<double>(), before.at("minimum").get<double>());
    spread["maximum"] = std::max(spread["maximum"].get<double>(), before.at("maximum").get<double>());
    for (std::size_t at = 0; at < spread.at("buckets").size(); ++at) {
        spread["buckets"][at] = sum(spread["buckets"][at], before.at("buckets").at(at));
    }
}

void addVersions(Json& versions, const Json& before) {
    std::map<std::uint64_t, std::uint64_t> counts;
    for (const Json* const each : {&before, static_cast<const Json*>(&versions)}) {
        for (const Json& version : *each) {
            counts[version.at("version").get<std::uint64_t>()] += version.at("sections").get<std::uint64_t>();
        }
    }
    versions = Json::array();
    for (const auto& [version, sections] : counts) {
        versions.push_back({{"version", version}, {"sections", sections}});
    }
}

/// The lower or the higher one, of those that are there.
template <class Better> void chooseRate(Json& rate, const Json& before, Better isBetter) {
    if (rate.is_null() || (!before.is_null() && isBetter(before.get<std::int64_t>(), rate.get<std::int64_t>()))) {
        rate = before;
    }
}

/// Adds what came before. What is not counted is as it is in the end.
void add(Json& object, const Json& before) {
    for (auto member = object.begin(); member != object.end(); ++member) {
        const std::string& name = member.key();
        if (COUNTS.count(name) != 0) {
            *member = sum(*member, before.at(name));
        } else if (SPREADS.count(name) != 0) {
            addSpread(*member, before.at(name));
        } else if (name == "versions") {
            addVersions(*member, before.at(name));
        } else if (name == "lowest_bit_rate") {
            chooseRate(*member, before.at(name), std::less<>());
        } else if (name == "highest_bit_rate") {
            chooseRate(*member, before.at(name), std::greater<>());
        }
    }
}

std::optional<double> secondsIn(const Json& object, const char* name) {
    const Json& seconds = object.at(name);
    return seconds.is_null() ? std::nullopt : std::optional(seconds.get<double>());
}

Position endOf(const Json& range) {
    Position end;
    end.seconds = secondsIn(range, "seconds");
    if (const Json& time = range.at("time"); !time.is_null()) {
        if (const auto milliseconds = readRfc3339(time.get<std::string>())) {
            end.time = WallTime{*milliseconds, WallTime::Source::TimeTable};
        }
    }
    return end;
}

/// What parts could not know: rates are those of all, and all times are known that will be.
void complete(Json& object, const Json& range) {
    const std::optional<double> seconds = secondsIn(range, "duration_until");
    const Position end = endOf(range);
    for (const std::string& name : SPREADS) {
        if (object.contains(name) && !object[name].at("longest").is_null()) {
            Json& longest = object[name]["longest"];
            Position position;
            position.seconds = secondsIn(longest, "seconds");
            if (longest.at("time").is_null()) {
                addTime(longest, dated(position, end));
            }
        }
    }
    if (object.contains("bytes")) {
        object["bit_rate"] = rounded(bitRateOfBytes(object["bytes"].get<std::uint64_t>(), seconds));
        return;
    }
    const auto packets = object.at("packets").get<std::uint64_t>();
    object["bit_rate"] = rounded(bitRate(packets, seconds));
    if (object.contains("share")) {
        object["share"] = measured(share(packets, range.at("packets_until").get<std::uint64_t>()));
    } else {
        object["duration"] = measured(seconds);
    }
}

} // namespace

void RangeMerger::take(const std::string& line) {
    if (m_isComplete) {
        return; // a range behind the end has nothing
    }
    try {
        std::string type(typeOf(line));
        Json object;
        if (type.empty() || type == "range" || isStatistics(type)) {
            object = parsed(line);
            type = object.at("type").get<std::string>();
        }
        if (type == "range") {
            endRange(object);
        } else if (isStatistics(type)) {
            takeStatistics(line, std::move(object));
        } else if (m_waiting.empty()) {
            m_write(line + '\n');
        } else {
            m_waiting.push_back({line, nullptr});
        }
    } catch (const Json::exception&) {
        throw MergeError("is no line of a range");
    }
    if (m_waiting.size() > MOST_WAITING) {
        throw MergeError("has more statistics than a range has");
    }
}

void RangeMerger::takeStatistics(const std::string& line, Json object) {
    if (const auto before = m_before.find(keyOf(object)); before != m_before.end()) {
        add(object, before->second);
    }
    m_waiting.push_back({line, std::move(object)});
}

void RangeMerger::endRange(const Json& range) {
    if (const auto before = range.at("packets_before").get<std::uint64_t>(); before != m_packets) {
        throw MergeError(
            fmt::format("ends a range that begins behind packet {}, and the one before it ended with packet {}", before,
                        m_packets));
    }
    m_packets = range.at("packets_until").get<std::uint64_t>();
    m_isComplete = range.at("ended").get<bool>();
    m_foundFault = m_isComplete && range.at("fault_found").get<bool>();
    for (Waiting& each : m_waiting) {
        if (!m_isComplete) { // only statistics come there
            Json& before = m_before[keyOf(each.statistics)];
            before = std::move(each.statistics);
        } else if (each.statistics.is_null()) {
            m_write(each.line + '\n');
        } else {
            complete(each.statistics, range);
            m_write(jsonLine(each.statistics));
        }
    }
    m_waiting.clear();
}

void RangeMerger::finish() const {
    if (!m_isComplete) {
        throw MergeError("the range that ends with the input is missing");
    }
}

} // namespace inspect
