#pragma once

#include "placing/FieldPlaces.h"

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <vector>

namespace inspect {

/// Bytes as two hexadecimal digits each, without anything between them.
nlohmann::ordered_json hexJson(const std::vector<std::uint8_t>& bytes);

/// Fields as members of an object under their names. What stands beside a value has a member of its own behind the
/// value's: the name of a code (stream_type_name, null for a code without one), the bytes of a text (network_name_hex),
/// a reading when there is one (unix_time_reading), and the seconds of a duration in digits (duration_seconds). Of the
/// elements of a list it is in an array of the same length (parameters_hex, frequencies_readings).
nlohmann::ordered_json fieldsJson(const Fields& fields);

/// Where they stand, as members of an object under the same names: "8-9" of a value, null where that is not known.
nlohmann::ordered_json placesJson(const Fields& fields, const FieldPlaces& places);

} // namespace inspect
