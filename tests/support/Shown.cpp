#include "support/Shown.h"

#include "descriptors/TCarouselIdentifierDescriptor.h"
#include "descriptors/TContentAvailabilityDescriptor.h"
#include "descriptors/TCountryAvailabilityDescriptor.h"
#include "descriptors/TDataComponentDescriptor.h"
#include "descriptors/TDigitalCopyControlDescriptor.h"
#include "descriptors/TLinkageDescriptor.h"
#include "descriptors/TNetworkNameDescriptor.h"
#include "descriptors/TPartialReceptionDescriptor.h"
#include "descriptors/TServiceDescriptor.h"
#include "descriptors/TServiceListDescriptor.h"
#include "descriptors/TStreamIdentifierDescriptor.h"
#include "descriptors/TSystemManagementDescriptor.h"
#include "descriptors/TTSInformationDescriptor.h"
#include "descriptors/TTerrestrialDeliverySystemDescriptor.h"
#include "descriptors/TVideoDecodeControlDescriptor.h"

#include <cstdio>

using namespace Quor;

namespace {

/// Printable characters as they are, all others by number.
std::string quoted(const std::string& characters) {
    std::string text = "\"";
    for (const char each : characters) {
        const bool plain = each >= ' ' && each <= '~' && each != '"' && each != '[' && each != '\\';
        text += plain ? std::string(1, each) : "[" + shownHex(static_cast<unsigned char>(each), 2) + "]";
    }
    return text + "\"";
}

std::string flag(const char* name, unsigned long value) {
    return std::string(name) + " " + std::to_string(value);
}

template <class Number> std::string numbers(const Number* array, unsigned count) {
    std::string text;
    for (unsigned i = 0; i < count; ++i) {
        text += " " + shownHex(array[i], 2 * static_cast<int>(sizeof(Number)));
    }
    return text;
}

std::string body(const TStreamIdentifierDescriptor& stream) {
    return shownHex(stream.getComponentTag(), 2);
}

std::string body(const TDataComponentDescriptor& component) {
    return shownHex(component.getDataComponentID(), 4) +
           numbers(component.getAdditionalData(), component.getAdditionalDataSize());
}

std::string body(const TCarouselIdentifierDescriptor& carousel) {
    return shownHex(carousel.getCarouselID(), 8) + numbers(carousel.getPrivateData(), carousel.getPrivateDataSize());
}

std::string body(const TVideoDecodeControlDescriptor& video) {
    return flag("still", video.isStillPicture() != 0) + ", " + flag("end", video.hasSequenceEndCode() != 0) + ", " +
           flag("format", video.getVideoEncodeFormat());
}

std::string body(const TDigitalCopyControlDescriptor& copy) {
    return flag("recording", copy.getDigitalRecordingControlData()) + ", " + flag("copy", copy.getCopyControlType()) +
           ", " + flag("APS", copy.getAPSControlData()) + (copy.hasMaximumBitrate() ? ", bitrate" : "") +
           (copy.hasComponentControl() ? ", components" : "");
}

std::string body(const TContentAvailabilityDescriptor& availability) {
    return flag("image", availability.isImageConstrained() != 0) + ", " +
           flag("retention", availability.isRetentionAllowed() != 0) + ", " +
           flag("state", availability.getRetentionState()) + ", " +
           flag("encryption", availability.isEncryptionModeEnabled() != 0);
}

std::string body(const TNetworkNameDescriptor& network) {
    return quoted(network.getNetworkName());
}

std::string body(const TSystemManagementDescriptor& management) {
    return shownHex(management.getSystemManagementID(), 4) +
           numbers(management.getAdditionalIdentificationInfo(), management.getAdditionalIdentificationInfoSize());
}

std::string body(const TServiceListDescriptor& services) {
    std::string text;
    const std::unique_ptr<std::list<QUOR_U8>> ids(services.getServiceIDs());
    for (const QUOR_U8 id : *ids) {
        text +=
            (text.empty() ? "" : ", ") + shownHex(id, 2) + " type " + shownHex(services.get(id)->getServiceType(), 2);
    }
    return text;
}

std::string body(const TLinkageDescriptor& linkage) {
    return shownHex(linkage.getTransportStreamID(), 4) + " " + shownHex(linkage.getOriginalNetworkID(), 4) + " " +
           shownHex(linkage.getServiceID(), 4) + " type " + shownHex(linkage.getLinkageType(), 2) +
           numbers(linkage.getPrivateData(), linkage.getPrivateDataSize());
}

std::string body(const TTerrestrialDeliverySystemDescriptor& delivery) {
    return "area " + shownHex(delivery.getAreaCode(), 3) + ", " + flag("guard", delivery.getGuardInterval()) + ", " +
           flag("mode", delivery.getTransmissionMode()) + "," +
           numbers(delivery.getFrequencies(), delivery.getFrequencyCounter());
}

std::string body(const TPartialReceptionDescriptor& partial) {
    const std::string text = numbers(partial.getServiceIDs(), partial.getServiceIDCount());
    return text.empty() ? text : text.substr(1);
}

std::string body(const TTSInformationDescriptor& information) {
    std::string text =
        "key " + shownHex(information.getRemoteControlKeyID(), 2) + ", " + quoted(information.getTransportStreamName());
    for (QUOR_U8 i = 0; i < information.getTransmissionTypeCount(); ++i) {
        const TTSInformationDescriptorItem& item = *information.getTransmissionType(i);
        text += ", " + shownHex(item.getTransmissionTypeInfo(), 2) + ":" +
                numbers(item.getServices(), item.getNumberOfServices());
    }
    return text;
}

std::string body(const TServiceDescriptor& service) {
    return "type " + shownHex(service.getServiceType(), 2) + ", " + quoted(service.getServiceProviderName()) + ", " +
           quoted(service.getServiceName());
}

std::string body(const TCountryAvailabilityDescriptor& countries) {
    std::string text = flag("flag", countries.getCountryAvailabilityFlag()) + ",";
    for (QUOR_U32 i = 0; i < countries.size(); ++i) {
        text += " " + shownHex(countries.get(i), 6);
    }
    return text;
}

template <class... Classes> std::string bodyOfOneOf(const TISDBTDescriptor& descriptor) {
    std::string text = "??";
    const auto tryOne = [&](const auto* known) {
        if (known != nullptr) {
            text = body(*known);
        }
    };
    (tryOne(dynamic_cast<const Classes*>(&descriptor)), ...);
    return text;
}

} // namespace

std::string shownHex(unsigned long value, int digits) {
    char text[20];
    std::snprintf(text, sizeof text, "%0*lX", digits, value);
    return text;
}

std::string shown(const TISDBTDescriptor& descriptor) {
    return shownHex(descriptor.getDescriptorTag(), 2) + " " +
           bodyOfOneOf<TStreamIdentifierDescriptor, TDataComponentDescriptor, TCarouselIdentifierDescriptor,
                       TVideoDecodeControlDescriptor, TDigitalCopyControlDescriptor, TContentAvailabilityDescriptor,
                       TNetworkNameDescriptor, TSystemManagementDescriptor, TServiceListDescriptor, TLinkageDescriptor,
                       TTerrestrialDeliverySystemDescriptor, TPartialReceptionDescriptor, TTSInformationDescriptor,
                       TServiceDescriptor, TCountryAvailabilityDescriptor>(descriptor);
}
