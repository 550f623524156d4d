#pragma once

#include "walking/DescriptorLoops.h"

namespace inspect {

/// A descriptor as it stands on the wire, and what the library says to it.
struct DescriptorOnWire {
    RawDescriptor raw;
    std::optional<std::uint16_t> errorCode; ///< with which the library refuses it
    std::string_view becauseOf; ///< why it is refused though the standard has it so; empty when that is no such case

    bool atFault() const { return !raw.fits() || errorCode; }

    /// What the error code means that does not say it; empty for the others.
    std::string_view errorReading() const;
};

struct LoopOnWire {
    std::string name;
    std::string remark; ///< "in 1 of 255 bytes"; empty when the loop is there as a whole
    std::vector<DescriptorOnWire> descriptors;
};

DescriptorOnWire describeOnWire(RawDescriptor descriptor);

/// The descriptors of a section that the library rejects, loop by loop.
/// @param section from table_id to CRC_32, or as much of it as there is
std::vector<LoopOnWire> describeDescriptors(const std::uint8_t* section, std::size_t size);

} // namespace inspect
