#include "describing/ApplicationIdentifier.h"
#include "describing/Catalogue.h"
#include "describing/Lists.h"
#include "describing/Readings.h"
#include "descriptors/TApplicationDescriptor.h"
#include "descriptors/TApplicationIconDescriptor.h"
#include "descriptors/TApplicationNameDescriptor.h"
#include "descriptors/TDIILocationDescriptor.h"
#include "descriptors/TExternalApplicationAuthorizationDescriptor.h"
#include "descriptors/TIPSignalingDescriptor.h"
#include "descriptors/TPrefetchDescriptor.h"
#include "naming/Names.h"

#include <fmt/format.h>

namespace inspect {

namespace {

Field describeProfile(const Quor::TApplicationDescriptorProfile& profile) {
    const unsigned major = profile.getVersionMajor();
    const unsigned minor = profile.getVersionMinor();
    const unsigned micro = profile.getVersionMicro();
    return object("", {identifier("application_profile", profile.getApplicationProfile(), 4)
                           .reads(fmt::format("version {}.{}.{}", major, minor, micro)),
                       number("version_major", major), number("version_minor", minor), number("version_micro", micro)});
}

Fields describeApplication(const Quor::TApplicationDescriptor& descriptor) {
    constexpr std::size_t PROFILE_SIZE = 5;
    const std::size_t sentProfiles = descriptor.getData()[2] / PROFILE_SIZE;
    const std::unique_ptr<QUOR_U8[]> labels(descriptor.getTransportProtocols());
    return {keptOf(listByKey("profiles", descriptor, &Quor::TApplicationDescriptor::getProfiles,
                             &Quor::TApplicationDescriptor::getProfile, describeProfile),
                   sentProfiles, "profile"),
            flag("service_bound", descriptor.isServiceBound()),
            code("visibility", descriptor.getVisibility(), names::APPLICATION_VISIBILITY),
            flag("visibile_for_users", descriptor.isVisibileForUsers()),
            flag("visibile_for_applications", descriptor.isVisibileForApplications()),
            number("application_priority", descriptor.getApplicationPriority()),
            number("transport_protocols_count", descriptor.getTransportProtocolsCount()),
            numbers("transport_protocols", labels.get(), descriptor.getTransportProtocolsCount(), 2)};
}

Field describeName(const Quor::TApplicationNameDescriptorItem& item) {
    return object("", {isoCode("language_code", item.getLanguageCode()), text("name", item.getName())});
}

/// Language codes of three bytes, each with a name behind its length.
std::size_t namesIn(const Quor::TApplicationNameDescriptor& descriptor) {
    constexpr unsigned LANGUAGE_CODE_SIZE = 3;
    const QUOR_U8* const data = descriptor.getData();
    std::size_t names = 0;
    for (unsigned at = 2; at + LANGUAGE_CODE_SIZE < 2U + data[1]; at += LANGUAGE_CODE_SIZE + 1) {
        at += data[at + LANGUAGE_CODE_SIZE];
        ++names;
    }
    return names;
}

Fields describeApplicationName(const Quor::TApplicationNameDescriptor& descriptor) {
    return {keptOf(listByKey("items", descriptor, &Quor::TApplicationNameDescriptor::getLanguageCodes,
                             &Quor::TApplicationNameDescriptor::get, describeName),
                   namesIn(descriptor), "language")};
}

using Quor::TApplicationIconDescriptor;

Fields describeApplicationIcon(const TApplicationIconDescriptor& descriptor) {
    return {address("icon_locator", descriptor.getIconLocator()),
            identifier("icon_flags", descriptor.getIconFlags(), 4)
                .reads(setFlags(descriptor.getIconFlags(), names::APPLICATION_ICON))};
}

Field describeAuthorization(const Quor::TExternalApplicationAuthorizationDescriptorItem& item) {
    return object("",
                  {applicationIdentifier(*item.getApplicationIdentifier()), number("priority", item.getPriority())});
}

Fields describeExternalApplicationAuthorization(const Quor::TExternalApplicationAuthorizationDescriptor& descriptor) {
    using Descriptor = Quor::TExternalApplicationAuthorizationDescriptor;
    constexpr std::size_t ITEM_SIZE = 7;
    const std::size_t sent = descriptor.getData()[1] / ITEM_SIZE;
    return {keptOf(listByKey("items", descriptor, &Descriptor::getApplicationIdentifierHashIDs, &Descriptor::get,
                             describeAuthorization),
                   sent, "application")};
}

Fields describeIpSignaling(const Quor::TIPSignalingDescriptor& descriptor) {
    return {identifier("platform_id", descriptor.getPlatformID(), 6)};
}

Field describePrefetched(const Quor::TPrefetchDescriptorItem& item) {
    return object("", {address("label", item.getLabel()), number("priority", item.getPriority())});
}

Fields describePrefetch(const Quor::TPrefetchDescriptor& descriptor) {
    return {
        identifier("transport_protocol_label", descriptor.getTransportProtocolLabel(), 2),
        listByPosition("items", descriptor, descriptor.size(), &Quor::TPrefetchDescriptor::get, describePrefetched)};
}

Field describeDii(const Quor::TDIILocationDescriptorItem& item) {
    return object("", {identifier("dii_identification", item.getDIIIdentification(), 4),
                       identifier("association_tag", item.getAssociationTag(), 4)});
}

Fields describeDiiLocation(const Quor::TDIILocationDescriptor& descriptor) {
    return {identifier("transport_protocol_label", descriptor.getTransportProtocolLabel(), 2),
            listByPosition("items", descriptor, descriptor.size(), &Quor::TDIILocationDescriptor::get, describeDii)};
}

} // namespace

void addApplicationDescriptors(Catalogue& catalogue) {
    catalogue.addDescriptor<describeApplication>("application_descriptor", {AIT});
    catalogue.addDescriptor<describeApplicationName>("application_name_descriptor", {AIT});
    catalogue.addDescriptor<describeApplicationIcon>("application_icon_descriptor", {AIT});
    catalogue.addDescriptor<describeExternalApplicationAuthorization>("external_application_authorization_descriptor",
                                                                      {AIT});
    catalogue.addDescriptor<describeIpSignaling>("ip_signaling_descriptor", {AIT});
    catalogue.addDescriptor<describePrefetch>("prefetch_descriptor", {AIT});
    catalogue.addDescriptor<describeDiiLocation>("dii_location_descriptor", {AIT});
}

} // namespace inspect
