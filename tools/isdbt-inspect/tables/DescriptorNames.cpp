#include "tables/DescriptorNames.h"

#include "naming/Names.h"
#include "tables/TableKinds.h"

#include <initializer_list>

namespace inspect {

namespace {

constexpr std::uint16_t GINGA_J = 0x0001;

std::string_view firstOf(std::initializer_list<std::string_view> names) {
    for (const std::string_view name : names) {
        if (!name.empty()) {
            return name;
        }
    }
    return {};
}

} // namespace

std::string_view descriptorName(const Carrier& carrier, std::uint8_t tag) {
    const bool isGinga = carrier.applicationType == GINGA_J || carrier.applicationType == Carrier::GINGA_NCL;
    switch (carrier.tableId) {
    case AIT:
        return (isGinga ? names::DESCRIPTOR_AIT_GINGA : names::DESCRIPTOR_AIT_DVB).of(tag);
    case DSMCC_STREAM_DESCRIPTORS:
        return names::DESCRIPTOR_DSMCC_STREAM.of(tag);
    default:
        return firstOf({carrier.tableId == SDTT ? names::DESCRIPTOR_SDTT.of(tag) : std::string_view{},
                        names::DESCRIPTOR_MPEG.of(tag), names::DESCRIPTOR_ISDB.of(tag), names::DESCRIPTOR_DVB.of(tag)});
    }
}

} // namespace inspect
