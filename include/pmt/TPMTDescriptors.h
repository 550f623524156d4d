#ifndef QUOR_TPMT_DESCRIPTORS_H
#define QUOR_TPMT_DESCRIPTORS_H

#include <memory>

namespace Quor {

class TAACDescriptor;
class TAVCTimingAndHRDDescriptor;
class TAVCVideoDescriptor;
class TCAIdentifierDescriptor;
class TCarouselCompatibleCompositeDescriptor;
class TCarouselIdentifierDescriptor;
class TComponentDescriptor;
class TConditionalPlaybackDescriptor;
class TContentAvailabilityDescriptor;
class TCopyrightDescriptor;
class TCountryAvailabilityDescriptor;
class TDataComponentDescriptor;
class TDigitalCopyControlDescriptor;
class TEmergencyInformationDescriptor;
class THierarchicalTransmissionDescriptor;
class TLinkageDescriptor;
class TMosaicDescriptor;
class TParentalRatingDescriptor;
class TStreamIdentifierDescriptor;
class TSystemManagementDescriptor;
class TTargetRegionDescriptor;
class TVideoDecodeControlDescriptor;

/// The descriptors of a program map table or of one of its elementary streams, at most one of each kind. Null: absent.
struct TPMTDescriptors {
    TPMTDescriptors();
    ~TPMTDescriptors();
    TPMTDescriptors(const TPMTDescriptors&) = delete;
    TPMTDescriptors& operator=(const TPMTDescriptors&) = delete;

    /// @name One descriptor of each kind; null when absent.
    /// @{
    std::unique_ptr<TCAIdentifierDescriptor> m_pCAIdentifierDesc;
    std::unique_ptr<TCopyrightDescriptor> m_pCopyrightDesc;
    std::unique_ptr<TCountryAvailabilityDescriptor> m_pCountryAvailabilityDesc;
    std::unique_ptr<TLinkageDescriptor> m_pLinkageDesc;
    std::unique_ptr<TComponentDescriptor> m_pComponentDesc;
    std::unique_ptr<TMosaicDescriptor> m_pMosaicDesc;
    std::unique_ptr<TStreamIdentifierDescriptor> m_pStreamIdentifierDesc;
    std::unique_ptr<TParentalRatingDescriptor> m_pParentalRatingDesc;
    std::unique_ptr<THierarchicalTransmissionDescriptor> m_pHierarchicalTransmDesc;
    std::unique_ptr<TDigitalCopyControlDescriptor> m_pDigitalCopyControlDesc;
    std::unique_ptr<TEmergencyInformationDescriptor> m_pEmergencyInfoDesc;
    std::unique_ptr<TDataComponentDescriptor> m_pDataComponentDesc;
    std::unique_ptr<TSystemManagementDescriptor> m_pSystemMngDesc;
    std::unique_ptr<TTargetRegionDescriptor> m_pTargetRegionDesc;
    std::unique_ptr<TVideoDecodeControlDescriptor> m_pVideoDecodeControlDesc;
    std::unique_ptr<TContentAvailabilityDescriptor> m_pContentAvailabilityDesc;
    std::unique_ptr<TCarouselCompatibleCompositeDescriptor> m_pCarouselCompCompoDesc;
    std::unique_ptr<TConditionalPlaybackDescriptor> m_pConditionalPlaybackDesc;
    std::unique_ptr<TAVCVideoDescriptor> m_pAVCVideoDescriptor;
    std::unique_ptr<TAVCTimingAndHRDDescriptor> m_pAVCTimingAndHRDDesc;
    std::unique_ptr<TAACDescriptor> m_pAACDesc;
    std::unique_ptr<TCarouselIdentifierDescriptor> m_pCarouselIdentDesc;
    /// @}
};

} // namespace Quor

#endif
