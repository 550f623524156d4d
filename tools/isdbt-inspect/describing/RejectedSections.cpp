#include "describing/Describing.h"
#include "parsing/LogLines.h"
#include "parsing/SectionParser.h"

#include <fmt/format.h>

namespace inspect {

namespace {

Field errorCode(const RawDescriptor& descriptor) {
    const LogLines dropped; // they are known from the section's own attempt
    const std::optional<std::uint16_t> code = refusal(descriptor);
    if (!code) {
        return absent("error_code").standsFor("");
    }
    return identifier("error_code", *code, 4).standsFor(errorName(*code));
}

Field describeLoop(const DescriptorLoop& loop) {
    Fields descriptors;
    for (const RawDescriptor& descriptor : loop.descriptors) {
        descriptors.push_back(describeOnWire(descriptor));
    }
    const bool complete = loop.available == loop.length;
    return list(loop.name, std::move(descriptors))
        .reads(complete ? "" : fmt::format("in {} of {} bytes", loop.available, loop.length));
}

} // namespace

Field describeOnWire(const RawDescriptor& descriptor) {
    return object("", {identifier("offset", static_cast<std::uint32_t>(descriptor.offset), 4),
                       identifier("descriptor_tag", descriptor.tag, 2).standsFor(descriptor.name),
                       flag("known", descriptor.kind != nullptr),
                       descriptor.length ? number("length", *descriptor.length).in("bytes") : absent("length"),
                       flag("fits", descriptor.fits()), errorCode(descriptor),
                       bytes("bytes", descriptor.body.data(), descriptor.body.size())});
}

Fields describeDescriptors(const std::uint8_t* section, std::size_t size) {
    Fields loops;
    for (const DescriptorLoop& loop : descriptorLoops(section, size)) {
        loops.push_back(describeLoop(loop));
    }
    return loops;
}

} // namespace inspect
