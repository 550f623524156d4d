#ifndef QUOR_PMT_TPMTFAMILY_H
#define QUOR_PMT_TPMTFAMILY_H

#include "detail/Loop.h"
#include "pmt/TProgramMap.h"

namespace Quor {

/// What both loops of the program map table carry, in the order of getDescriptorTags().
inline constexpr const detail::Family& PMT_FAMILY =
    detail::FamilyOf<TCAIdentifierDescriptor, TCopyrightDescriptor, TCountryAvailabilityDescriptor, TLinkageDescriptor,
                     TComponentDescriptor, TMosaicDescriptor, TStreamIdentifierDescriptor, TParentalRatingDescriptor,
                     THierarchicalTransmissionDescriptor, TDigitalCopyControlDescriptor,
                     TEmergencyInformationDescriptor, TDataComponentDescriptor, TSystemManagementDescriptor,
                     TTargetRegionDescriptor, TVideoDecodeControlDescriptor, TContentAvailabilityDescriptor,
                     TCarouselCompatibleCompositeDescriptor, TConditionalPlaybackDescriptor, TAVCVideoDescriptor,
                     TAVCTimingAndHRDDescriptor, TAACDescriptor, TCarouselIdentifierDescriptor>::FAMILY;

} // namespace Quor

#endif
