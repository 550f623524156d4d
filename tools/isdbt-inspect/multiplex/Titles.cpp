#include "multiplex/Titles.h"

#include "describing/FieldLookup.h"
#include "naming/Names.h"
#include "tables/TableKinds.h"

#include <fmt/format.h>

namespace inspect {

namespace {

std::string titleOfApplications(const Table& ait) {
    const std::string_view type = names::APPLICATION_TYPE.of(ait.key.extension);
    return type.empty() ? fmt::format("AIT of type 0x{:04X}", ait.key.extension)
                        : fmt::format("AIT of {} (0x{:04X})", type, ait.key.extension);
}

std::string titleOfDownload(const Table& sdtt) {
    const Fields fields = sdtt.beside("download_contents");
    const std::optional<std::int64_t> maker = numberIn(fields, "maker_id");
    const std::optional<std::int64_t> model = numberIn(fields, "model_id");
    return maker && model ? fmt::format("Download for maker 0x{:02X}, model 0x{:02X}", *maker, *model)
                          : fmt::format("Download 0x{:04X}", sdtt.key.extension);
}

} // namespace

std::string titleOf(const Multiplex& /*multiplex*/) {
    return "Transport stream";
}

std::string titleOf(const Network& network) {
    return fmt::format("Network 0x{0:04X} ({0})", network.nit->key.extension);
}

std::string titleOf(const TransportStream& stream) {
    return stream.id ? fmt::format("Transport stream 0x{0:04X} ({0})", *stream.id) : "Transport stream";
}

std::string titleOf(const Service& service) {
    return fmt::format("Service 0x{0:04X} ({0})", service.id);
}

std::string titleOf(const Component& component) {
    return fmt::format("Component PID 0x{:04X}", component.pid);
}

std::string titleOf(const Unclaimed& unclaimed) {
    return unclaimed.pid ? fmt::format("PID 0x{:04X}", *unclaimed.pid) : "";
}

std::string titleOf(const Table& table) {
    switch (table.key.tableId) {
    case AIT:
        return titleOfApplications(table);
    case SDTT:
        return titleOfDownload(table);
    case TOT:
        return "Time";
    default:
        return "DSM-CC stream descriptors";
    }
}

std::string titleOfApplication(const Fields& application) {
    const Fields& id = inner(application, "application_identifier");
    return fmt::format("Application 0x{:08X}/0x{:04X}", numberIn(id, "organization_id").value_or(0),
                       numberIn(id, "application_id").value_or(0));
}

} // namespace inspect
