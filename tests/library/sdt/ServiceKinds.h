#pragma once

#include "sdt/TSDTTable.h"
#include "sdt/TServiceDescription.h"
#include "support/Kinds.h"
#include "support/Sections.h"

using ServiceKind = DescriptorKind<Quor::TSDTTable, Quor::TServiceDescription>;

/// The kinds in the order of getDescriptorTags().
inline std::vector<ServiceKind> serviceKinds() {
    std::vector<ServiceKind> kinds;
    forEachHeld<Quor::TServiceDescription>(classRows(), [&kinds](const auto& row) {
        kinds.push_back(kindOf<ServiceKind>(row));
        kinds.back().ofEntry = getterOf<Quor::TServiceDescription>(row.in);
    });
    return inOrder(kinds, hex("48 47 49 4A C1 CF DE 4B 4C 51 53"));
}

/// A service entry: service_id | EIT flags | running_status, free_CA_mode, descriptors_loop_length | descriptors.
inline ByteVector serviceEntry(unsigned serviceId, const ByteVector& descriptors = {}) {
    return join({u16(serviceId), hex("FD"), u16(static_cast<unsigned>(descriptors.size()), 0x8000), descriptors});
}

/// A service description section of original_network_id 0x7ED4.
inline ByteVector sdt(const ByteVector& services, const LongHeader& header = {}) {
    return longSection(0x42, header, join({hex("7ED4 FF"), services}));
}
