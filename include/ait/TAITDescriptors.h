#ifndef QUOR_TAIT_DESCRIPTORS_H
#define QUOR_TAIT_DESCRIPTORS_H

#include <memory>

namespace Quor {

class TApplicationDescriptor;
class TApplicationIconDescriptor;
class TApplicationNameDescriptor;
class TDIILocationDescriptor;
class TExternalApplicationAuthorizationDescriptor;
class TGingaApplicationDescriptor;
class TGingaApplicationLocationDescriptor;
class TIPSignalingDescriptor;
class TPrefetchDescriptor;
class TTransportProtocolDescriptor;

/// What the common loop of an application information table and the loop of each application may carry: one
/// descriptor of each kind, null when absent.
struct TAITDescriptors {
    TAITDescriptors();
    ~TAITDescriptors();

    TAITDescriptors(const TAITDescriptors&) = delete;
    TAITDescriptors& operator=(const TAITDescriptors&) = delete;

    /// @name One descriptor of each kind; null when absent.
    /// @{
    std::unique_ptr<TApplicationDescriptor> m_pApplicationDesc;
    std::unique_ptr<TApplicationNameDescriptor> m_pApplicationNameDesc;
    std::unique_ptr<TApplicationIconDescriptor> m_pApplicationIconDesc;
    std::unique_ptr<TExternalApplicationAuthorizationDescriptor> m_pExternalAppAuthDesc;
    std::unique_ptr<TTransportProtocolDescriptor> m_pTransportProtocolDesc;
    std::unique_ptr<TIPSignalingDescriptor> m_pIPSignalingDesc;
    std::unique_ptr<TPrefetchDescriptor> m_pPrefetchDesc;
    std::unique_ptr<TDIILocationDescriptor> m_pDIILocationDesc;
    /// The Ginga-J or the Ginga-NCL class.
    std::unique_ptr<TGingaApplicationDescriptor> m_pGingaAppParamsDesc;
    /// The Ginga-J or the Ginga-NCL class.
    std::unique_ptr<TGingaApplicationLocationDescriptor> m_pGingaAppLocationDesc;
    /// @}
};

} // namespace Quor

#endif
