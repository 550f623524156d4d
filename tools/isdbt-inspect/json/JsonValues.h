#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>

namespace inspect {

/// An object as a line of its own. What is no UTF-8, as the names of files and the library's log may hold it, is
/// U+FFFD.
std::string jsonLine(const nlohmann::ordered_json& object);

/// Null for an empty text.
nlohmann::ordered_json orNull(const std::string& text);

nlohmann::ordered_json orNull(std::optional<std::uint64_t> number);

/// A time to a microsecond or a share to a millionth, which is as far as streams tell them.
nlohmann::ordered_json measured(std::optional<double> value);

/// To a whole number.
nlohmann::ordered_json rounded(std::optional<double> value);

} // namespace inspect
