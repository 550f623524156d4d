#ifndef QUOR_TNIT_DESCRIPTORS_H
#define QUOR_TNIT_DESCRIPTORS_H

#include <memory>

namespace Quor {

class TEmergencyInformationDescriptor;
class TLinkageDescriptor;
class TNetworkNameDescriptor;
class TPartialReceptionDescriptor;
class TServiceListDescriptor;
class TSystemManagementDescriptor;
class TTSInformationDescriptor;
class TTerrestrialDeliverySystemDescriptor;

/// The descriptors of a network or of one of its transport streams, at most one of each kind. Null: absent.
struct TNITDescriptors {
    TNITDescriptors();
    ~TNITDescriptors();
    TNITDescriptors(const TNITDescriptors&) = delete;
    TNITDescriptors& operator=(const TNITDescriptors&) = delete;

    /// @name One descriptor of each kind; null when absent.
    /// @{
    std::unique_ptr<TNetworkNameDescriptor> m_pNetworkNameDesc;
    std::unique_ptr<TSystemManagementDescriptor> m_pSystemMngDesc;
    std::unique_ptr<TServiceListDescriptor> m_pServiceListDesc;
    std::unique_ptr<TLinkageDescriptor> m_pLinkageDesc;
    std::unique_ptr<TTerrestrialDeliverySystemDescriptor> m_pTerDelSysDesc;
    std::unique_ptr<TEmergencyInformationDescriptor> m_pEmergencyInfoDesc;
    std::unique_ptr<TPartialReceptionDescriptor> m_pPartialRecepDesc;
    std::unique_ptr<TTSInformationDescriptor> m_pTSInfoDesc;
    /// @}
};

} // namespace Quor

#endif
