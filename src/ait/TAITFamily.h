#ifndef QUOR_AIT_TAITFAMILY_H
#define QUOR_AIT_TAITFAMILY_H

#include "ait/TApplication.h"
#include "detail/Loop.h"

namespace Quor {

/// What both loops of the application information table carry, in the order of getDescriptorTags(). The Ginga-J and the
/// Ginga-NCL class of a pair share a place: an application is of one type.
using AITFamily =
    detail::FamilyOf<TApplicationDescriptor, TApplicationNameDescriptor, TApplicationIconDescriptor,
                     TExternalApplicationAuthorizationDescriptor, TTransportProtocolDescriptor, TIPSignalingDescriptor,
                     TPrefetchDescriptor, TDIILocationDescriptor,
                     detail::Either<TGingaJavaApplicationDescriptor, TGingaNCLApplicationDescriptor>,
                     detail::Either<TGingaJavaApplicationLocationDescriptor, TGingaNCLApplicationLocationDescriptor>>;

} // namespace Quor

#endif
