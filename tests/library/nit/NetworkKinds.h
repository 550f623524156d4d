#pragma once

#include "nit/TNITTable.h"
#include "nit/TTransportStreamInfo.h"
#include "support/Kinds.h"
#include "support/Sections.h"

using NetworkKind = DescriptorKind<Quor::TNITTable, Quor::TTransportStreamInfo>;

/// The kinds in the order of getDescriptorTags().
inline std::vector<NetworkKind> networkKinds() {
    std::vector<NetworkKind> kinds;
    forEachHeld<Quor::TNITTable>(classRows(), [&kinds](const auto& row) {
        kinds.push_back(kindOf<NetworkKind>(row));
        kinds.back().ofTable = getterOf<Quor::TNITTable>(row.in);
        kinds.back().ofEntry = getterOf<Quor::TTransportStreamInfo>(row.in);
    });
    return inOrder(kinds, hex("40 FE 41 4A FA FC FB CD"));
}

/// A transport stream entry: transport_stream_id | original_network_id | transport_descriptors_length | descriptors.
inline ByteVector transportStream(unsigned transportStreamId, unsigned originalNetworkId,
                                  const ByteVector& descriptors = {}) {
    return join({u16(transportStreamId), u16(originalNetworkId), loopOf(descriptors)});
}

/// A network information section around its two loops.
inline ByteVector nit(const ByteVector& networkDescriptors, const ByteVector& transportStreams,
                      const LongHeader& header = {}) {
    return longSection(0x40, header, join({loopOf(networkDescriptors), loopOf(transportStreams)}));
}
