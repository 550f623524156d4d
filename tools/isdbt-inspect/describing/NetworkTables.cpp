#include "describing/Catalogue.h"
#include "describing/Lists.h"
#include "describing/Loops.h"
#include "naming/Names.h"
#include "nit/TNITTable.h"
#include "sdt/TSDTTable.h"

namespace inspect {

namespace {

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

using Quor::TServiceDescription;

Field describeService(const TServiceDescription& service) {
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
    catalogue.addTable<describeNit>();
    catalogue.addTable<describeSdt>();
}

} // namespace inspect
