#ifndef QUOR_NIT_TNITFAMILY_H
#define QUOR_NIT_TNITFAMILY_H

#include "detail/Loop.h"
#include "nit/TTransportStreamInfo.h"

namespace Quor {

/// What both loops of the network information table carry, in the order of getDescriptorTags().
inline constexpr const detail::Family& NIT_FAMILY =
    detail::FamilyOf<TNetworkNameDescriptor, TSystemManagementDescriptor, TServiceListDescriptor, TLinkageDescriptor,
                     TTerrestrialDeliverySystemDescriptor, TEmergencyInformationDescriptor, TPartialReceptionDescriptor,
                     TTSInformationDescriptor>::FAMILY;

} // namespace Quor

#endif
