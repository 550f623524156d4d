#include "describing/Catalogue.h"
#include "describing/Lists.h"
#include "describing/Loops.h"
#include "describing/Readings.h"
#include "descriptors/TEmergencyInformationDescriptor.h"
#include "descriptors/TLinkageDescriptor.h"
#include "descriptors/TNetworkNameDescriptor.h"
#include "descriptors/TPartialReceptionDescriptor.h"
#include "descriptors/TServiceListDescriptor.h"
#include "descriptors/TSystemManagementDescriptor.h"
#include "descriptors/TTSInformationDescriptor.h"
#include "descriptors/TTerrestrialDeliverySystemDescriptor.h"
#include "naming/Names.h"
#include "nit/TNITTable.h"
#include "sdt/TSDTTable.h"

#include <fmt/format.h>

namespace inspect {

namespace {

Fields describeNetworkName(const Quor::TNetworkNameDescriptor& descriptor) {
    return {text("network_name", descriptor.getNetworkName())};
}

Fields describeSystemManagement(const Quor::TSystemManagementDescriptor& descriptor) {
    return {identifier("system_management_id", descriptor.getSystemManagementID(), 4)
                .reads(systemManagement(descriptor.getSystemManagementID())),
            number("additional_identification_info_size", descriptor.getAdditionalIdentificationInfoSize()).in("bytes"),
            bytes("additional_identification_info", descriptor.getAdditionalIdentificationInfo(),
                  descriptor.getAdditionalIdentificationInfoSize())};
}

Field describeListedService(const Quor::TServiceListDescriptorItem& item) {
    return object("", {identifier("service_id", item.getServiceID(), 2),
                       identifier("service_type", item.getServiceType(), 2).named(names::SERVICE_TYPE)});
}

Fields describeServiceList(const Quor::TServiceListDescriptor& descriptor) {
    constexpr std::size_t ITEM_SIZE = 2;
    const std::size_t sent = descriptor.getData()[1] / ITEM_SIZE;
    return {keptOf(listByKey("items", descriptor, &Quor::TServiceListDescriptor::getServiceIDs,
                             &Quor::TServiceListDescriptor::get, describeListedService),
                   sent, "service")};
}

Fields describeLinkage(const Quor::TLinkageDescriptor& descriptor) {
    return {identifier("transport_stream_id", descriptor.getTransportStreamID(), 4),
            identifier("original_network_id", descriptor.getOriginalNetworkID(), 4),
            identifier("service_id", descriptor.getServiceID(), 4),
            identifier("linkage_type", descriptor.getLinkageType(), 2).named(names::LINKAGE_TYPE),
            number("private_data_size", descriptor.getPrivateDataSize()).in("bytes"),
            bytes("private_data", descriptor.getPrivateData(), descriptor.getPrivateDataSize())};
}

Fields describeTerrestrialDeliverySystem(const Quor::TTerrestrialDeliverySystemDescriptor& descriptor) {
    Fields frequencies;
    for (unsigned at = 0; at < descriptor.getFrequencyCounter(); ++at) {
        const QUOR_U16 frequency = descriptor.getFrequencies()[at];
        frequencies.push_back(number("", frequency).in("x 1/7 MHz").reads(megahertz(frequency)));
    }
    return {identifier("area_code", descriptor.getAreaCode(), 3).named(names::AREA_CODE_JAPAN),
            code("guard_interval", descriptor.getGuardInterval(), names::GUARD_INTERVAL),
            code("transmission_mode", descriptor.getTransmissionMode(), names::TRANSMISSION_MODE),
            number("frequency_counter", descriptor.getFrequencyCounter()), list("frequencies", std::move(frequencies))};
}

Field describeEmergency(const Quor::TEmergencyInformationDescriptorItem& item) {
    const unsigned areaCodeBytes = item.getAreaCodeCounter();
    return object(
        "", {identifier("service_id", item.getServiceID(), 4), flag("start", item.isStart()),
             code("signal_level", item.getSignalLevel(), names::EMERGENCY_SIGNAL_LEVEL),
             number("area_code_counter", areaCodeBytes).in("bytes"),
             codes("area_codes", item.getAreaCodes(), areaCodeBytes / sizeof(QUOR_U16), 3, names::AREA_CODE_JAPAN)});
}

Fields describeEmergencyInformation(const Quor::TEmergencyInformationDescriptor& descriptor) {
    return {items(descriptor, describeEmergency)};
}

Fields describePartialReception(const Quor::TPartialReceptionDescriptor& descriptor) {
    return {number("service_id_count", descriptor.getServiceIDCount()),
            numbers("service_ids", descriptor.getServiceIDs(), descriptor.getServiceIDCount(), 4)};
}

Field describeTransmissionType(const Quor::TTSInformationDescriptorItem& item) {
    return object("",
                  {identifier("transmission_type_info", item.getTransmissionTypeInfo(), 2),
                   code("transmission_parameter_type", item.getTransmissionParameterType(), names::TS_INFORMATION_TYPE),
                   code("modulation_system", item.getModulationSystem(), names::TS_INFORMATION_MODULATION),
                   number("number_of_services", item.getNumberOfServices()),
                   numbers("services", item.getServices(), item.getNumberOfServices(), 4)});
}

Fields describeTsInformation(const Quor::TTSInformationDescriptor& descriptor) {
    return {number("remote_control_key_id", descriptor.getRemoteControlKeyID()),
            text("transport_stream_name", descriptor.getTransportStreamName()),
            listByPosition("transmission_types", descriptor, descriptor.getTransmissionTypeCount(),
                           &Quor::TTSInformationDescriptor::getTransmissionType, describeTransmissionType)};
}

Field describeTransportStream(const Quor::TTransportStreamInfo& stream) {
    Fields fields{identifier("transport_stream_id", stream.getTransportStreamID(), 4),
                  identifier("original_network_id", stream.getOriginalNetworkID(), 4)};
    appendDescriptors(fields, stream);
    return object("", std::move(fields));
}

Fields describeNit(const Quor::TNITTable& nit) {
    const Loops loops(nit);
    Fields fields{identifier("network_id", nit.getNetworkID(), 4)};
    appendDescriptors(fields, nit);
    loops.appendLeftOut(fields);
    Field streams = listByKey("transport_streams", nit, &Quor::TNITTable::getTransportStreamIDs,
                              &Quor::TNITTable::getTransportStreamInfo, describeTransportStream);
    loops.appendLeftOutByKey(streams, "transport stream");
    fields.push_back(std::move(streams));
    return fields;
}

Field describeService(const Quor::TServiceDescription& service) {
    Fields fields{identifier("service_id", service.getServiceID(), 4), flag("eit_schedule", service.hasEITSchedule()),
                  flag("eit_present_following", service.hasEITPresentFollowing()),
                  code("running_status", service.getRunningStatus(), names::RUNNING_STATUS),
                  code("free_ca_mode", service.getFreeCAMode(), names::FREE_CA_MODE)};
    appendDescriptors(fields, service);
    return object("", std::move(fields));
}

Fields describeSdt(const Quor::TSDTTable& sdt) {
    Field services = listByKey("services", sdt, &Quor::TSDTTable::getServiceIDs,
                               &Quor::TSDTTable::getServiceDescription, describeService);
    Loops(sdt).appendLeftOutByKey(services, "service");
    return {identifier("transport_stream_id", sdt.getTransportStreamID(), 4),
            identifier("original_network_id", sdt.getOriginalNetworkID(), 4), std::move(services)};
}

} // namespace

void addNetworkTables(Catalogue& catalogue) {
    catalogue.addDescriptor<describeNetworkName>("network_name_descriptor", {NIT});
    catalogue.addDescriptor<describeSystemManagement>("system_management_descriptor", {PMT, NIT});
    catalogue.addDescriptor<describeServiceList>("service_list_descriptor", {NIT});
    catalogue.addDescriptor<describeLinkage>("linkage_descriptor", {PMT, NIT, SDT});
    catalogue.addDescriptor<describeTerrestrialDeliverySystem>("terrestrial_delivery_system_descriptor", {NIT});
    catalogue.addDescriptor<describeEmergencyInformation>("emergency_information_descriptor", {PMT, NIT});
    catalogue.addDescriptor<describePartialReception>("partial_reception_descriptor", {NIT});
    catalogue.addDescriptor<describeTsInformation>("ts_information_descriptor", {NIT});
    catalogue.addTable<describeNit>();
    catalogue.addTable<describeSdt>();
}

} // namespace inspect
