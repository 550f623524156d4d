#include "describing/Catalogue.h"
#include "pat/TPATTable.h"

namespace inspect {

namespace {

Field describeProgram(const Quor::TProgramAssociation& program) {
    return object("", {identifier("program_number", program.getProgramNumber(), 4),
                       identifier("program_map_pid", program.getProgramMapPid(), 4)});
}

Fields describePat(const Quor::TPATTable& pat) {
    Fields programs;
    const std::unique_ptr<std::list<QUOR_U16>> numbers(pat.getProgramNumbers());
    for (const QUOR_U16 programNumber : *numbers) {
        programs.push_back(describeProgram(*pat.get(programNumber)));
    }
    return {identifier("transport_stream_id", pat.getTransportStreamID(), 4),
            identifier("network_pid", pat.getNetworkPid(), 4), list("programs", std::move(programs))};
}

} // namespace

void addProgramTables(Catalogue& catalogue) {
    catalogue.addTable<describePat>();
}

} // namespace inspect
