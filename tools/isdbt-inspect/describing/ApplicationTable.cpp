#include "ait/TAITTable.h"
#include "ait/TApplicationIdentifier.h"
#include "describing/Catalogue.h"
#include "describing/Lists.h"
#include "describing/Loops.h"
#include "describing/Readings.h"
#include "descriptors/TApplicationDescriptor.h"
#include "descriptors/TApplicationIconDescriptor.h"
#include "descriptors/TApplicationNameDescriptor.h"
#include "descriptors/TDIILocationDescriptor.h"
#include "descriptors/TExternalApplicationAuthorizationDescriptor.h"
#include "descriptors/TGingaApplicationDescriptor.h"
#include "descriptors/TGingaApplicationLocationDescriptor.h"
#include "descriptors/TGingaJavaApplicationDescriptor.h"
#include "descriptors/TGingaJavaApplicationLocationDescriptor.h"
#include "descriptors/TGingaNCLApplicationDescriptor.h"
#include "descriptors/TGingaNCLApplicationLocationDescriptor.h"
#include "descriptors/TIPSignalingDescriptor.h"
#include "descriptors/TPrefetchDescriptor.h"
#include "descriptors/TTransportProtocolDescriptor.h"
#include "descriptors/TTransportProtocolDescriptorDC.h"
#include "descriptors/TTransportProtocolDescriptorIP.h"
#include "descriptors/TTransportProtocolDescriptorOC.h"
#include "naming/Names.h"

#include <fmt/format.h>

namespace inspect {

namespace {

/// What identifies an application.
Field applicationIdentifier(const Quor::TApplicationIdentifier& id) {
    return object("application_identifier", {identifier("organization_id", id.getOrganizationID(), 8),
                                             identifier("application_id", id.getApplicationID(), 4)});
}

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

Fields describeApplicationIcon(const Quor::TApplicationIconDescriptor& descriptor) {
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
    return {identifier("transport_protocol_label", descriptor.getTransportProtocolLabel(), 2),
            items(descriptor, describePrefetched)};
}

Field describeDii(const Quor::TDIILocationDescriptorItem& item) {
    return object("", {identifier("dii_identification", item.getDIIIdentification(), 4),
                       identifier("association_tag", item.getAssociationTag(), 4)});
}

Fields describeDiiLocation(const Quor::TDIILocationDescriptor& descriptor) {
    return {identifier("transport_protocol_label", descriptor.getTransportProtocolLabel(), 2),
            items(descriptor, describeDii)};
}

Field describeParameter(const std::string& parameter) {
    return address("", parameter);
}

Fields describeParameters(const Quor::TGingaApplicationDescriptor& descriptor) {
    return {listByPosition("parameters", descriptor, descriptor.size(), &Quor::TGingaApplicationDescriptor::get,
                           describeParameter)};
}

Fields describeLocation(const Quor::TGingaApplicationLocationDescriptor& descriptor) {
    return {address("base_directory", descriptor.getBaseDirectory()),
            address("classpath_extension", descriptor.getClasspathExtension()),
            address("initial_class", descriptor.getInitialClass())};
}

/// What all variants begin with.
template <class Descriptor> Fields describeTransport(const Descriptor& descriptor) {
    return {code("type", descriptor.getType(), names::APPLICATION_PROTOCOL),
            identifier("protocol_id", descriptor.getProtocolID(), 4),
            identifier("transport_protocol_label", descriptor.getTransportProtocolLabel(), 2),
            flag("remote_connection", descriptor.isRemoteConnection()),
            identifier("original_network_id", descriptor.getOriginalNetworkID(), 4),
            identifier("transport_stream_id", descriptor.getTransportStreamID(), 4),
            identifier("service_id", descriptor.getServiceID(), 4)};
}

template <class Descriptor> Fields describeCarousel(const Descriptor& descriptor) {
    Fields fields = describeTransport(descriptor);
    fields.push_back(identifier("component_tag", descriptor.getComponentTag(), 2));
    return fields;
}

Field describeUrl(const std::string& url) {
    return address("", url);
}

Fields describeIp(const Quor::TTransportProtocolDescriptorIP& descriptor) {
    Fields fields = describeTransport(descriptor);
    fields.push_back(flag("aligned", descriptor.isAligned()));
    fields.push_back(listByPosition("urls", descriptor, descriptor.getURLCount(),
                                    &Quor::TTransportProtocolDescriptorIP::getURL, describeUrl));
    return fields;
}

using Quor::TApplication;

/// The application's descriptor of a kind, or the one that it inherits from its table, marked as such.
template <class Descriptor>
void appendOwnOrInherited(Fields& fields, const TApplication& application,
                          Descriptor* (TApplication::*get)(int, int*) const) {
    int inherited = 0;
    const Descriptor* const descriptor = (application.*get)(1, &inherited);
    if (descriptor == nullptr) {
        return;
    }
    Field field = Catalogue::instance().describe(*descriptor);
    if (inherited != 0) {
        Fields& inner = std::get<Object>(field.value).fields;
        inner.insert(inner.begin(), flag("inherited", true));
    }
    fields.push_back(std::move(field));
}

Field describeEntry(const TApplication& application) {
    Fields fields{address("hash_id", application.getHashID()),
                  applicationIdentifier(*application.getApplicationIdentifier()),
                  code("control_code", application.getControlCode(), names::APPLICATION_CONTROL_CODE),
                  identifier("application_type", application.getApplicationType(), 4).named(names::APPLICATION_TYPE)};
    appendOwnOrInherited(fields, application, &TApplication::getApplicationDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getApplicationNameDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getApplicationIconDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getExternalApplicationAuthorizationDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getTransportProtocolDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getIPSignalingDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getPrefetchDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getDIILocationDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getGingaApplicationDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getGingaApplicationLocationDescriptor);
    return object("", std::move(fields));
}

Field describeApplications(const Quor::TAITTable& ait) {
    Fields applications;
    const std::unique_ptr<const std::list<std::string>> ids(&ait.getApplicationsIDs());
    for (const std::string& id : *ids) {
        applications.push_back(describeEntry(*ait.getApplication(id)));
    }
    return list("applications", std::move(applications));
}

Fields describeAit(const Quor::TAITTable& ait) {
    const Loops loops(ait);
    Fields fields{identifier("application_type", ait.getApplicationType(), 4).named(names::APPLICATION_TYPE)};
    appendDescriptors(fields, ait);
    loops.appendLeftOut(fields);
    Field applications = describeApplications(ait);
    loops.appendLeftOutByKey(applications, "application");
    fields.push_back(std::move(applications));
    return fields;
}

} // namespace

void addApplicationTable(Catalogue& catalogue) {
    catalogue.addDescriptor<describeApplication>("application_descriptor", {AIT});
    catalogue.addDescriptor<describeApplicationName>("application_name_descriptor", {AIT});
    catalogue.addDescriptor<describeApplicationIcon>("application_icon_descriptor", {AIT});
    catalogue.addDescriptor<describeExternalApplicationAuthorization>("external_application_authorization_descriptor",
                                                                      {AIT});
    catalogue.addDescriptor<describeIpSignaling>("ip_signaling_descriptor", {AIT});
    catalogue.addDescriptor<describePrefetch>("prefetch_descriptor", {AIT});
    catalogue.addDescriptor<describeDiiLocation>("dii_location_descriptor", {AIT});
    constexpr std::string_view APPLICATION = "ginga_application_descriptor";
    constexpr std::string_view LOCATION = "ginga_application_location_descriptor";
    constexpr std::string_view TRANSPORT = "transport_protocol_descriptor";
    constexpr std::string_view JAVA = "Ginga-J";
    constexpr std::string_view NCL = "Ginga-NCL";
    catalogue.addDescriptor<describeParameters, Quor::TGingaJavaApplicationDescriptor>(APPLICATION, {AIT}, JAVA);
    catalogue.addDescriptor<describeParameters, Quor::TGingaNCLApplicationDescriptor>(APPLICATION, {AIT}, NCL);
    catalogue.addDescriptor<describeLocation, Quor::TGingaJavaApplicationLocationDescriptor>(LOCATION, {AIT}, JAVA);
    catalogue.addDescriptor<describeLocation, Quor::TGingaNCLApplicationLocationDescriptor>(LOCATION, {AIT}, NCL);
    catalogue.addDescriptor<describeCarousel<Quor::TTransportProtocolDescriptorOC>>(TRANSPORT, {AIT});
    catalogue.addDescriptor<describeIp>(TRANSPORT, {AIT});
    catalogue.addDescriptor<describeCarousel<Quor::TTransportProtocolDescriptorDC>>(TRANSPORT, {AIT});
    catalogue.addTable<describeAit>();
}

} // namespace inspect
