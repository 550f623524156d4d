#include "describing/OnWire.h"

#include "TISDBTTable.h"
#include "describing/StandardReadings.h"
#include "parsing/LogLines.h"

#include <fmt/format.h>

namespace inspect {

std::string_view DescriptorOnWire::errorReading() const {
    return errorCode == Quor::TISDBTTable::ERROR_OK
               ? "ERROR_OK is what this receiver says of a transport that it does not support"
               : "";
}

DescriptorOnWire describeOnWire(RawDescriptor descriptor) {
    const LogLines dropped; // they are known from the section's own attempt
    const std::optional<std::uint16_t> errorCode = refusal(descriptor);
    const std::string_view becauseOf = errorCode ? refusedBecause(descriptor.name, descriptor.body) : "";
    return {std::move(descriptor), errorCode, becauseOf};
}

std::vector<LoopOnWire> describeDescriptors(const std::uint8_t* section, std::size_t size) {
    std::vector<LoopOnWire> loops;
    for (DescriptorLoop& loop : descriptorLoops(section, size)) {
        const bool complete = loop.available == loop.length;
        loops.push_back(
            {std::move(loop.name), complete ? "" : fmt::format("in {} of {} bytes", loop.available, loop.length), {}});
        for (RawDescriptor& descriptor : loop.descriptors) {
            loops.back().descriptors.push_back(describeOnWire(std::move(descriptor)));
        }
    }
    return loops;
}

} // namespace inspect
