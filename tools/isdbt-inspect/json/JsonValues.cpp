#include "json/JsonValues.h"

#include "packets/WallClock.h"

#include <cmath>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace inspect {

using Json = nlohmann::ordered_json;

namespace {

const char* nameOf(WallTime::Source source) {
    return source == WallTime::Source::Arrival ? "arrival" : "TOT";
}

/// The hash of Fowler, Noll and Vo, FNV-1a, of 64 bits.
std::uint64_t hashOf(std::string_view text) {
    constexpr std::uint64_t BASIS = 0xCBF29CE484222325;
    constexpr std::uint64_t PRIME = 0x100000001B3;
    std::uint64_t hash = BASIS;
    for (const char each : text) {
        hash = (hash ^ static_cast<std::uint8_t>(each)) * PRIME;
    }
    return hash;
}

std::string orDash(std::optional<std::uint64_t> number) {
    return number ? std::to_string(*number) : "-";
}

} // namespace

double toMicro(double value) {
    constexpr double STEPS = 1e6;
    return std::round(value * STEPS) / STEPS;
}

Json lineObject(const char* type, const std::string& source) {
    return {{"type", type}, {"schema_version", SCHEMA_VERSION}, {"source", source}};
}

void addPosition(Json& object, const std::optional<Position>& position) {
    object["packet"] = position && position->packet != 0 ? Json(position->packet) : Json();
    object["offset"] = position ? Json(position->offset) : Json();
    addTime(object, position.value_or(Position()));
}

void addTime(Json& object, const Position& position) {
    object["seconds"] = measured(position.seconds);
    object["time"] = position.time ? Json(rfc3339(*position.time)) : Json();
    object["time_source"] = position.time ? Json(nameOf(position.time->source)) : Json();
}

Position dated(Position position, const Position& last) {
    constexpr double SECOND = 1000;
    if (!position.time && position.seconds && last.time && last.seconds) {
        position.time = last.time;
        position.time->milliseconds -= std::llround((toMicro(*last.seconds) - toMicro(*position.seconds)) * SECOND);
    }
    return position;
}

std::string eventId(std::string_view kind, const FaultPlace& place, const std::optional<Position>& position,
                    std::uint64_t number) {
    const std::string where = position ? fmt::format("{} {}", position->packet, position->offset) : "- -";
    return fmt::format("{:016x}", hashOf(fmt::format("{} {} {} {} {} {}", kind, orDash(place.pid),
                                                     orDash(place.tableId), orDash(place.extension), where, number)));
}

std::string jsonLine(const Json& object) {
    return object.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

Json orNull(const std::string& text) {
    return text.empty() ? Json() : Json(text);
}

Json orNull(std::optional<std::uint64_t> number) {
    return number ? Json(*number) : Json();
}

Json measured(std::optional<double> value) {
    return value ? Json(toMicro(*value)) : Json();
}

Json rangesJson(const Ranges& ranges) {
    std::string text;
    for (const auto& [first, last] : ranges.all()) {
        text += fmt::format("{}{}", text.empty() ? "" : ",", first);
        text += first == last ? "" : fmt::format("-{}", last);
    }
    return orNull(text);
}

Json rounded(std::optional<double> value) {
    return value ? Json(std::llround(*value)) : Json();
}

} // namespace inspect
