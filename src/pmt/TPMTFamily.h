#ifndef QUOR_PMT_TPMTFAMILY_H
#define QUOR_PMT_TPMTFAMILY_H

#include "pmt/TPMTDescriptors.h"

#include "descriptors/TAACDescriptor.h"
#include "descriptors/TAVCTimingAndHRDDescriptor.h"
#include "descriptors/TAVCVideoDescriptor.h"
#include "descriptors/TCAIdentifierDescriptor.h"
#include "descriptors/TCarouselCompatibleCompositeDescriptor.h"
#include "descriptors/TCarouselIdentifierDescriptor.h"
#include "descriptors/TComponentDescriptor.h"
#include "descriptors/TConditionalPlaybackDescriptor.h"
#include "descriptors/TContentAvailabilityDescriptor.h"
#include "descriptors/TCopyrightDescriptor.h"
#include "descriptors/TCountryAvailabilityDescriptor.h"
#include "descriptors/TDataComponentDescriptor.h"
#include "descriptors/TDigitalCopyControlDescriptor.h"
#include "descriptors/TEmergencyInformationDescriptor.h"
#include "descriptors/THierarchicalTransmissionDescriptor.h"
#include "descriptors/TLinkageDescriptor.h"
#include "descriptors/TMosaicDescriptor.h"
#include "descriptors/TParentalRatingDescriptor.h"
#include "descriptors/TStreamIdentifierDescriptor.h"
#include "descriptors/TSystemManagementDescriptor.h"
#include "descriptors/TTargetRegionDescriptor.h"
#include "descriptors/TVideoDecodeControlDescriptor.h"
#include "detail/Family.h"

namespace Quor {

/// The kinds in the order of getDescriptorTags().
inline constexpr detail::Family PMT_FAMILY{detail::kind<&TPMTDescriptors::m_pCAIdentifierDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pCopyrightDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pCountryAvailabilityDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pLinkageDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pComponentDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pMosaicDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pStreamIdentifierDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pParentalRatingDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pHierarchicalTransmDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pDigitalCopyControlDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pEmergencyInfoDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pDataComponentDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pSystemMngDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pTargetRegionDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pVideoDecodeControlDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pContentAvailabilityDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pCarouselCompCompoDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pConditionalPlaybackDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pAVCVideoDescriptor>(),
                                           detail::kind<&TPMTDescriptors::m_pAVCTimingAndHRDDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pAACDesc>(),
                                           detail::kind<&TPMTDescriptors::m_pCarouselIdentDesc>()};

} // namespace Quor

#endif
