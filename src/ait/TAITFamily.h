#ifndef QUOR_TAIT_FAMILY_H
#define QUOR_TAIT_FAMILY_H

#include "ait/TAITDescriptors.h"
#include "descriptors/TApplicationDescriptor.h"
#include "descriptors/TApplicationIconDescriptor.h"
#include "descriptors/TApplicationNameDescriptor.h"
#include "descriptors/TDIILocationDescriptor.h"
#include "descriptors/TExternalApplicationAuthorizationDescriptor.h"
#include "descriptors/TGingaJavaApplicationDescriptor.h"
#include "descriptors/TGingaJavaApplicationLocationDescriptor.h"
#include "descriptors/TGingaNCLApplicationDescriptor.h"
#include "descriptors/TGingaNCLApplicationLocationDescriptor.h"
#include "descriptors/TIPSignalingDescriptor.h"
#include "descriptors/TPrefetchDescriptor.h"
#include "descriptors/TTransportProtocolDescriptor.h"
#include "detail/Family.h"

namespace Quor {

/// What both loops of the application information table carry, in the order of getDescriptorTags(). The Ginga-J and the
/// Ginga-NCL class of a pair share a place: an application is of one type.
inline constexpr detail::Family AIT_FAMILY{
    detail::kind<&TAITDescriptors::m_pApplicationDesc>(),
    detail::kind<&TAITDescriptors::m_pApplicationNameDesc>(),
    detail::kind<&TAITDescriptors::m_pApplicationIconDesc>(),
    detail::kind<&TAITDescriptors::m_pExternalAppAuthDesc>(),
    detail::kind<&TAITDescriptors::m_pTransportProtocolDesc>(),
    detail::kind<&TAITDescriptors::m_pIPSignalingDesc>(),
    detail::kind<&TAITDescriptors::m_pPrefetchDesc>(),
    detail::kind<&TAITDescriptors::m_pDIILocationDesc>(),
    detail::kind<&TAITDescriptors::m_pGingaAppParamsDesc, TGingaJavaApplicationDescriptor>(),
    detail::kind<&TAITDescriptors::m_pGingaAppParamsDesc, TGingaNCLApplicationDescriptor>(),
    detail::kind<&TAITDescriptors::m_pGingaAppLocationDesc, TGingaJavaApplicationLocationDescriptor>(),
    detail::kind<&TAITDescriptors::m_pGingaAppLocationDesc, TGingaNCLApplicationLocationDescriptor>()};

} // namespace Quor

#endif
