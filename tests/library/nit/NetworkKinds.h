#pragma once

#include "descriptors/TEmergencyInformationDescriptor.h"
#include "descriptors/TLinkageDescriptor.h"
#include "descriptors/TNetworkNameDescriptor.h"
#include "descriptors/TPartialReceptionDescriptor.h"
#include "descriptors/TServiceListDescriptor.h"
#include "descriptors/TSystemManagementDescriptor.h"
#include "descriptors/TTSInformationDescriptor.h"
#include "descriptors/TTerrestrialDeliverySystemDescriptor.h"
#include "nit/TNITTable.h"
#include "nit/TTransportStreamInfo.h"
#include "support/Kinds.h"
#include "support/Sections.h"

using NetworkKind = DescriptorKind<Quor::TNITTable, Quor::TTransportStreamInfo>;

template <class D>
NetworkKind networkKind(const std::string& name, const std::string& good, QUOR_U32 minimum,
                        D* (Quor::TNITTable::*ofTable)() const, D* (Quor::TTransportStreamInfo::*ofEntry)() const) {
    NetworkKind kind = kindWithMinimum<Quor::TNITTable, Quor::TTransportStreamInfo>(name, good, minimum);
    kind.ofTable = ofTable;
    kind.ofEntry = ofEntry;
    return kind;
}

/// The kinds in the order of getDescriptorTags().
inline std::vector<NetworkKind> networkKinds() {
    using N = Quor::TNITTable;
    using T = Quor::TTransportStreamInfo;
    return {networkKind("NetworkName", "40 03 474C42", 1, &N::getNetworkNameDescriptor, &T::getNetworkNameDescriptor),
            networkKind("SystemManagement", "FE 02 0301", 2, &N::getSystemManagementDescriptor,
                        &T::getSystemManagementDescriptor),
            networkKind("ServiceList", "41 02 20 01", 2, &N::getServiceListDescriptor, &T::getServiceListDescriptor),
            networkKind("Linkage", "4A 07 0001 0002 0003 01", 7, &N::getLinkageDescriptor, &T::getLinkageDescriptor),
            networkKind("TerrestrialDeliverySystem", "FA 04 8916 0F90", 4, &N::getTerrestrialDeliverySystemDescriptor,
                        &T::getTerrestrialDeliverySystemDescriptor),
            networkKind("EmergencyInformation", "FC 06 5C20 80 02 1230", 4, &N::getEmergencyInformationDescriptor,
                        &T::getEmergencyInformationDescriptor),
            networkKind("PartialReception", "FB 02 5C38", 2, &N::getPartialReceptionDescriptor,
                        &T::getPartialReceptionDescriptor),
            networkKind("TSInformation", "CD 09 07 0D 474C42 0F 01 5C20", 8, &N::getTSInformationDescriptor,
                        &T::getTSInformationDescriptor)};
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
