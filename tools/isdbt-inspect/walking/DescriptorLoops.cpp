#include "walking/DescriptorLoops.h"

#include "TISDBTTable.h"
#include "tables/TableKinds.h"
#include "walking/SectionWalk.h"

#include <algorithm>
#include <iterator>

namespace inspect {

namespace {

constexpr std::size_t DESCRIPTOR_HEADER_SIZE = 2;

RawDescriptor descriptorAt(const Carrier& carrier, const std::uint8_t* data, std::size_t at, std::size_t end) {
    const DescriptorKind* const kind = knownDescriptor(carrier.tableId, data[at]);
    RawDescriptor descriptor{at, data[at], std::nullopt,
                             {}, kind,     kind == nullptr ? descriptorName(carrier, data[at]) : kind->name};
    if (end - at < DESCRIPTOR_HEADER_SIZE) {
        return descriptor;
    }
    descriptor.length = data[at + 1];
    const std::uint8_t* const body = data + at + DESCRIPTOR_HEADER_SIZE;
    descriptor.body.assign(body, body + std::min<std::size_t>(*descriptor.length, end - at - DESCRIPTOR_HEADER_SIZE));
    return descriptor;
}

} // namespace

std::vector<DescriptorLoop> descriptorLoops(const std::uint8_t* section, std::size_t size) {
    SectionWalk walk(section, size);
    const TableKind* const kind = size == 0 ? nullptr : tableKind(section[0]);
    if (kind != nullptr && kind->walk != nullptr) {
        kind->walk(walk);
    }
    return walk.take();
}

std::vector<RawDescriptor> descriptorsIn(const Carrier& carrier, const std::uint8_t* data, std::size_t begin,
                                         std::size_t end) {
    std::vector<RawDescriptor> descriptors;
    for (std::size_t at = begin; at < end;) {
        descriptors.push_back(descriptorAt(carrier, data, at, end));
        const RawDescriptor& last = descriptors.back();
        at = last.fits() ? at + DESCRIPTOR_HEADER_SIZE + last.body.size() : end;
    }
    return descriptors;
}

std::vector<std::uint8_t> RawDescriptor::bytes() const {
    std::vector<std::uint8_t> all{tag};
    if (length) {
        all.push_back(*length);
    }
    all.insert(all.end(), body.begin(), body.end());
    return all;
}

std::optional<std::uint16_t> refusal(const RawDescriptor& descriptor) {
    if (descriptor.kind == nullptr || !descriptor.fits()) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> bytes = descriptor.bytes();
    QUOR_U16 errorCode = Quor::TISDBTTable::ERROR_OK;
    const auto taken = descriptor.kind->parse(bytes.data(), static_cast<QUOR_U32>(bytes.size()), &errorCode);
    return taken != nullptr ? std::nullopt : std::optional<std::uint16_t>(errorCode);
}

} // namespace inspect
