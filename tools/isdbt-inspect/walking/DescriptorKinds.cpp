#include "walking/DescriptorKinds.h"

#include "descriptors/TAACDescriptor.h"
#include "descriptors/TAVCTimingAndHRDDescriptor.h"
#include "descriptors/TAVCVideoDescriptor.h"
#include "descriptors/TApplicationDescriptor.h"
#include "descriptors/TApplicationIconDescriptor.h"
#include "descriptors/TApplicationNameDescriptor.h"
#include "descriptors/TBouquetNameDescriptor.h"
#include "descriptors/TCAIdentifierDescriptor.h"
#include "descriptors/TCarouselCompatibleCompositeDescriptor.h"
#include "descriptors/TCarouselIdentifierDescriptor.h"
#include "descriptors/TComponentDescriptor.h"
#include "descriptors/TConditionalPlaybackDescriptor.h"
#include "descriptors/TContentAvailabilityDescriptor.h"
#include "descriptors/TCopyrightDescriptor.h"
#include "descriptors/TCountryAvailabilityDescriptor.h"
#include "descriptors/TDIILocationDescriptor.h"
#include "descriptors/TDataComponentDescriptor.h"
#include "descriptors/TDigitalCopyControlDescriptor.h"
#include "descriptors/TDownloadContentDescriptor.h"
#include "descriptors/TEmergencyInformationDescriptor.h"
#include "descriptors/TExternalApplicationAuthorizationDescriptor.h"
#include "descriptors/TGingaJavaApplicationDescriptor.h"
#include "descriptors/TGingaJavaApplicationLocationDescriptor.h"
#include "descriptors/TGingaNCLApplicationDescriptor.h"
#include "descriptors/TGingaNCLApplicationLocationDescriptor.h"
#include "descriptors/THierarchicalTransmissionDescriptor.h"
#include "descriptors/TIPSignalingDescriptor.h"
#include "descriptors/TLinkageDescriptor.h"
#include "descriptors/TLocalTimeOffsetDescriptor.h"
#include "descriptors/TLogoTransmissionDescriptor.h"
#include "descriptors/TMosaicDescriptor.h"
#include "descriptors/TNPTReferenceDescriptor.h"
#include "descriptors/TNVODReferenceDescriptor.h"
#include "descriptors/TNetworkNameDescriptor.h"
#include "descriptors/TParentalRatingDescriptor.h"
#include "descriptors/TPartialReceptionDescriptor.h"
#include "descriptors/TPrefetchDescriptor.h"
#include "descriptors/TServiceDescriptor.h"
#include "descriptors/TServiceListDescriptor.h"
#include "descriptors/TStreamEventDescriptor.h"
#include "descriptors/TStreamIdentifierDescriptor.h"
#include "descriptors/TStreamModeDescriptor.h"
#include "descriptors/TSystemManagementDescriptor.h"
#include "descriptors/TTSInformationDescriptor.h"
#include "descriptors/TTargetRegionDescriptor.h"
#include "descriptors/TTerrestrialDeliverySystemDescriptor.h"
#include "descriptors/TTimeShiftedServiceDescriptor.h"
#include "descriptors/TTransportProtocolDescriptor.h"
#include "descriptors/TVideoDecodeControlDescriptor.h"

#include <algorithm>
#include <iterator>

namespace inspect {

namespace {

using namespace Quor;

template <class Descriptor>
std::unique_ptr<TISDBTDescriptor> parse(QUOR_U8* data, QUOR_U32 length, QUOR_U16* errorCode) {
    return std::unique_ptr<TISDBTDescriptor>(Descriptor::parse(data, length, nullptr, errorCode));
}

template <class Descriptor> constexpr DescriptorKind kind(std::string_view name) {
    return {Descriptor::DESCRIPTOR_TAG, name, parse<Descriptor>};
}

// The kinds that several tables carry.
constexpr DescriptorKind CA_IDENTIFIER = kind<TCAIdentifierDescriptor>("ca_identifier_descriptor");
constexpr DescriptorKind COUNTRY_AVAILABILITY = kind<TCountryAvailabilityDescriptor>("country_availability_descriptor");
constexpr DescriptorKind LINKAGE = kind<TLinkageDescriptor>("linkage_descriptor");
constexpr DescriptorKind MOSAIC = kind<TMosaicDescriptor>("mosaic_descriptor");
constexpr DescriptorKind DIGITAL_COPY_CONTROL = kind<TDigitalCopyControlDescriptor>("digital_copy_control_descriptor");
constexpr DescriptorKind EMERGENCY_INFORMATION =
    kind<TEmergencyInformationDescriptor>("emergency_information_descriptor");
constexpr DescriptorKind SYSTEM_MANAGEMENT = kind<TSystemManagementDescriptor>("system_management_descriptor");
constexpr DescriptorKind CONTENT_AVAILABILITY = kind<TContentAvailabilityDescriptor>("content_availability_descriptor");

constexpr DescriptorKind PROGRAM_MAP_KINDS[] = {
    CA_IDENTIFIER,
    kind<TCopyrightDescriptor>("copyright_descriptor"),
    COUNTRY_AVAILABILITY,
    LINKAGE,
    kind<TComponentDescriptor>("component_descriptor"),
    MOSAIC,
    kind<TStreamIdentifierDescriptor>("stream_identifier_descriptor"),
    kind<TParentalRatingDescriptor>("parental_rating_descriptor"),
    kind<THierarchicalTransmissionDescriptor>("hierarchical_transmission_descriptor"),
    DIGITAL_COPY_CONTROL,
    EMERGENCY_INFORMATION,
    kind<TDataComponentDescriptor>("data_component_descriptor"),
    SYSTEM_MANAGEMENT,
    kind<TTargetRegionDescriptor>("target_region_descriptor"),
    kind<TVideoDecodeControlDescriptor>("video_decode_control_descriptor"),
    CONTENT_AVAILABILITY,
    kind<TCarouselCompatibleCompositeDescriptor>("carousel_compatible_composite_descriptor"),
    kind<TConditionalPlaybackDescriptor>("conditional_playback_descriptor"),
    kind<TAVCVideoDescriptor>("avc_video_descriptor"),
    kind<TAVCTimingAndHRDDescriptor>("avc_timing_and_hrd_descriptor"),
    kind<TAACDescriptor>("aac_descriptor"),
    kind<TCarouselIdentifierDescriptor>("carousel_identifier_descriptor"),
};

constexpr DescriptorKind NETWORK_INFORMATION_KINDS[] = {
    kind<TNetworkNameDescriptor>("network_name_descriptor"),
    SYSTEM_MANAGEMENT,
    kind<TServiceListDescriptor>("service_list_descriptor"),
    LINKAGE,
    kind<TTerrestrialDeliverySystemDescriptor>("terrestrial_delivery_system_descriptor"),
    EMERGENCY_INFORMATION,
    kind<TPartialReceptionDescriptor>("partial_reception_descriptor"),
    kind<TTSInformationDescriptor>("ts_information_descriptor"),
};

constexpr DescriptorKind SERVICE_DESCRIPTION_KINDS[] = {
    kind<TServiceDescriptor>("service_descriptor"),
    kind<TBouquetNameDescriptor>("bouquet_name_descriptor"),
    COUNTRY_AVAILABILITY,
    LINKAGE,
    DIGITAL_COPY_CONTROL,
    kind<TLogoTransmissionDescriptor>("logo_transmission_descriptor"),
    CONTENT_AVAILABILITY,
    kind<TNVODReferenceDescriptor>("nvod_reference_descriptor"),
    kind<TTimeShiftedServiceDescriptor>("time_shifted_service_descriptor"),
    MOSAIC,
    CA_IDENTIFIER,
};

constexpr DescriptorKind TIME_OFFSET_KINDS[] = {
    kind<TLocalTimeOffsetDescriptor>("local_time_offset_descriptor"),
};

constexpr DescriptorKind APPLICATION_INFORMATION_KINDS[] = {
    kind<TApplicationDescriptor>("application_descriptor"),
    kind<TApplicationNameDescriptor>("application_name_descriptor"),
    kind<TApplicationIconDescriptor>("application_icon_descriptor"),
    kind<TExternalApplicationAuthorizationDescriptor>("external_application_authorization_descriptor"),
    kind<TTransportProtocolDescriptor>("transport_protocol_descriptor"),
    kind<TIPSignalingDescriptor>("ip_signaling_descriptor"),
    kind<TPrefetchDescriptor>("prefetch_descriptor"),
    kind<TDIILocationDescriptor>("dii_location_descriptor"),
    kind<TGingaJavaApplicationDescriptor>("ginga_application_descriptor"),
    kind<TGingaNCLApplicationDescriptor>("ginga_application_descriptor"),
    kind<TGingaJavaApplicationLocationDescriptor>("ginga_application_location_descriptor"),
    kind<TGingaNCLApplicationLocationDescriptor>("ginga_application_location_descriptor"),
};

constexpr DescriptorKind SOFTWARE_DOWNLOAD_KINDS[] = {
    kind<TDownloadContentDescriptor>("download_content_descriptor"),
};

constexpr DescriptorKind DSMCC_KINDS[] = {
    kind<TNPTReferenceDescriptor>("npt_reference_descriptor"),
    kind<TStreamModeDescriptor>("stream_mode_descriptor"),
    kind<TStreamEventDescriptor>("stream_event_descriptor"),
};

struct Family {
    std::uint8_t tableId;
    const DescriptorKind* begin;
    const DescriptorKind* end;
};

template <std::size_t N> constexpr Family family(std::uint8_t tableId, const DescriptorKind (&kinds)[N]) {
    return {tableId, kinds, kinds + N};
}

constexpr Family FAMILIES[] = {
    family(0x02, PROGRAM_MAP_KINDS),
    family(0x40, NETWORK_INFORMATION_KINDS),
    family(0x42, SERVICE_DESCRIPTION_KINDS),
    family(0x73, TIME_OFFSET_KINDS),
    family(0x74, APPLICATION_INFORMATION_KINDS),
    family(0xC3, SOFTWARE_DOWNLOAD_KINDS),
    family(0x3D, DSMCC_KINDS),
};

} // namespace

const DescriptorKind* knownDescriptor(std::uint8_t tableId, std::uint8_t tag) {
    for (const Family& family : FAMILIES) {
        if (family.tableId == tableId) {
            const auto* const found =
                std::find_if(family.begin, family.end, [tag](const DescriptorKind& each) { return each.tag == tag; });
            return found == family.end ? nullptr : found;
        }
    }
    return nullptr;
}

} // namespace inspect
