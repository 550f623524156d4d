#pragma once

#include "reports/Fault.h"
#include "sections/Ranges.h"

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

namespace inspect {

/// Which members the lines have, and what they mean. It grows when what there was changes; new members alone change
/// nothing.
constexpr unsigned SCHEMA_VERSION = 1;

/// The members with which every line begins.
/// @param source what the user calls the input
nlohmann::ordered_json lineObject(const char* type, const std::string& source);

/// An object as a line of its own. What is no UTF-8, as the names of files and the library's log may hold it, is
/// U+FFFD.
std::string jsonLine(const nlohmann::ordered_json& object);

/// Null for an empty text.
nlohmann::ordered_json orNull(const std::string& text);

nlohmann::ordered_json orNull(std::optional<std::uint64_t> number);

/// As far as streams tell times and shares.
double toMicro(double value);

/// A time to a microsecond or a share to a millionth, which is as far as streams tell them.
nlohmann::ordered_json measured(std::optional<double> value);

/// Where in the stream something is, and when. Nothing is known of what is nowhere.
void addPosition(nlohmann::ordered_json& object, const std::optional<Position>& position);

/// When alone.
void addTime(nlohmann::ordered_json& object, const Position& position);

/// What came before the time of the world was known has it in the end, too, as far as seconds are written.
/// @param last what came last
Position dated(Position position, const Position& last);

/// Tells one event of a source from another, each time that its stream is read.
/// @param kind what happened
/// @param number of those before it of the same kind at the same place
std::string eventId(std::string_view kind, const FaultPlace& place, const std::optional<Position>& position,
                    std::uint64_t number = 0);

/// "8-9,12"; null for no numbers.
nlohmann::ordered_json rangesJson(const Ranges& ranges);

/// To a whole number.
nlohmann::ordered_json rounded(std::optional<double> value);

} // namespace inspect
