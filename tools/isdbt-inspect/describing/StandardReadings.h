#pragma once

#include "describing/Field.h"

#include <string_view>
#include <vector>

namespace inspect {

class Bits;

/// Something that the receiver reads otherwise than the standard has it. Its applications depend on that, so that it
/// stays; a person is shown both.
struct OtherReading {
    std::string_view descriptor;
    std::vector<std::string_view> fields; ///< the receiver's
    std::string_view standard;            ///< what the standard says of them
    std::string_view receiver;            ///< what the receiver makes of them
    Agreement agreement;

    /// The standard's fields, from the body of a descriptor. It takes more than there is when they are not there whole.
    Fields (*read)(Bits& body);
};

/// All that is read otherwise.
const std::vector<OtherReading>& otherReadings();

/// A descriptor that the receiver refuses, though the standard has it so.
struct RightRefused {
    std::string_view descriptor;
    std::string_view because;    ///< of what the receiver refuses it
    bool (*isRight)(Bits& body); ///< whether a body is as the standard has it, and has what the receiver does not take
};

/// All that is refused in spite of the standard.
const std::vector<RightRefused>& rightRefused();

/// Why the receiver refuses a descriptor that is right by the standard; empty for one that is not, as far as is known.
std::string_view refusedBecause(std::string_view descriptor, const std::vector<std::uint8_t>& body);

/// The name of the object that has the standard's reading of a descriptor, beside the receiver's fields.
constexpr std::string_view STANDARD = "standard";

/// Adds the standard's reading to the fields of a descriptor, where it differs and the bytes have it whole.
/// @param wire from the tag on; has all of it
void addStandardReading(std::string_view descriptor, const std::uint8_t* wire, Fields& fields);

/// What people are told of the fields that the receiver reads otherwise.
constexpr std::string_view RECEIVER = "the receiver reads";

/// The fields of an object in the order for people: those of the standard first, what the receiver reads otherwise in
/// an object behind all, and no pieces of a value.
Fields standardFirst(const Fields& fields);

} // namespace inspect
