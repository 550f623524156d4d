#include "describing/Catalogue.h"
#include "describing/Lists.h"
#include "descriptors/TTransportProtocolDescriptorDC.h"
#include "descriptors/TTransportProtocolDescriptorIP.h"
#include "descriptors/TTransportProtocolDescriptorOC.h"
#include "naming/Names.h"

namespace inspect {

namespace {

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

} // namespace

void addTransportDescriptors(Catalogue& catalogue) {
    constexpr std::string_view NAME = "transport_protocol_descriptor";
    catalogue.addDescriptor<describeCarousel<Quor::TTransportProtocolDescriptorOC>>(NAME, {AIT});
    catalogue.addDescriptor<describeIp>(NAME, {AIT});
    catalogue.addDescriptor<describeCarousel<Quor::TTransportProtocolDescriptorDC>>(NAME, {AIT});
}

} // namespace inspect
