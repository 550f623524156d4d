#pragma once

#include "describing/DescriptorKinds.h"
#include "tables/DescriptorNames.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {

/// A descriptor as its tag and its length state it, whether or not the library takes it.
struct RawDescriptor {
    std::size_t offset; ///< of its tag in the section
    std::uint8_t tag;
    std::optional<std::uint8_t> length; ///< nothing when the loop ends behind the tag
    std::vector<std::uint8_t> body;     ///< as much of it as the loop holds
    const DescriptorKind* kind;         ///< null when the library skips it
    std::string_view name;              ///< empty when neither the library nor a standard has one for it

    bool fits() const { return length && body.size() == *length; }

    /// All of it that there is, from its tag on.
    std::vector<std::uint8_t> bytes() const;
};

/// Descriptors one behind the other.
struct DescriptorLoop {
    std::string name;                 ///< "network", "transport_stream 0x0735", ...
    std::optional<std::uint64_t> key; ///< of the table's entry that it belongs to; nothing for the table's own loop
    std::size_t length;               ///< as it is stated
    std::size_t available;            ///< how much of that the section holds
    std::vector<RawDescriptor> descriptors;
};

/// The loops of a section, in the order of the wire. Nothing behind the section's end is read, whatever its lengths
/// state. A loop ends at the first descriptor that does not fit in it.
/// @param section from table_id to CRC_32, or as much of it as there is
std::vector<DescriptorLoop> descriptorLoops(const std::uint8_t* section, std::size_t size);

/// The descriptors that stand one behind the other between two offsets, up to the first one that does not fit.
std::vector<RawDescriptor> descriptorsIn(const Carrier& carrier, const std::uint8_t* data, std::size_t begin,
                                         std::size_t end);

/// The error code with which the library refuses a descriptor that it knows; nothing when it takes it, or is not asked
/// because it does not know it or the descriptor does not fit.
std::optional<std::uint16_t> refusal(const RawDescriptor& descriptor);

} // namespace inspect
