#ifndef QUOR_NIT_TNITFAMILY_H
#define QUOR_NIT_TNITFAMILY_H

#include "nit/TNITDescriptors.h"

#include "descriptors/TEmergencyInformationDescriptor.h"
#include "descriptors/TLinkageDescriptor.h"
#include "descriptors/TNetworkNameDescriptor.h"
#include "descriptors/TPartialReceptionDescriptor.h"
#include "descriptors/TServiceListDescriptor.h"
#include "descriptors/TSystemManagementDescriptor.h"
#include "descriptors/TTSInformationDescriptor.h"
#include "descriptors/TTerrestrialDeliverySystemDescriptor.h"
#include "detail/Family.h"

namespace Quor {

/// The kinds in the order of getDescriptorTags().
inline constexpr detail::Family NIT_FAMILY{
    detail::kind<&TNITDescriptors::m_pNetworkNameDesc>(),  detail::kind<&TNITDescriptors::m_pSystemMngDesc>(),
    detail::kind<&TNITDescriptors::m_pServiceListDesc>(),  detail::kind<&TNITDescriptors::m_pLinkageDesc>(),
    detail::kind<&TNITDescriptors::m_pTerDelSysDesc>(),    detail::kind<&TNITDescriptors::m_pEmergencyInfoDesc>(),
    detail::kind<&TNITDescriptors::m_pPartialRecepDesc>(), detail::kind<&TNITDescriptors::m_pTSInfoDesc>()};

} // namespace Quor

#endif
