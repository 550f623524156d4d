#ifndef QUOR_AIT_FAMILY_H
#define QUOR_AIT_FAMILY_H

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

namespace Quor::detail {

/// What both loops of the application information table carry. The Ginga-J and the Ginga-NCL class of a pair share a
/// place: an application is of one type.
inline constexpr Family AIT_FAMILY{
    kind<&TAITDescriptors::m_pApplicationDesc>(),
    kind<&TAITDescriptors::m_pApplicationNameDesc>(),
    kind<&TAITDescriptors::m_pApplicationIconDesc>(),
    kind<&TAITDescriptors::m_pExternalAppAuthDesc>(),
    kind<&TAITDescriptors::m_pTransportProtocolDesc>(),
    kind<&TAITDescriptors::m_pIPSignalingDesc>(),
    kind<&TAITDescriptors::m_pPrefetchDesc>(),
    kind<&TAITDescriptors::m_pDIILocationDesc>(),
    kind<&TAITDescriptors::m_pGingaAppParamsDesc, TGingaJavaApplicationDescriptor>(),
    kind<&TAITDescriptors::m_pGingaAppParamsDesc, TGingaNCLApplicationDescriptor>(),
    kind<&TAITDescriptors::m_pGingaAppLocationDesc, TGingaJavaApplicationLocationDescriptor>(),
    kind<&TAITDescriptors::m_pGingaAppLocationDesc, TGingaNCLApplicationLocationDescriptor>()};

} // namespace Quor::detail

#endif
