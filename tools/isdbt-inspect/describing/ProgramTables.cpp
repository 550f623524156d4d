#include "describing/Catalogue.h"
#include "describing/Lists.h"
#include "describing/Loops.h"
#include "naming/Names.h"
#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"

namespace inspect {

namespace {

Field describeProgram(const Quor::TProgramAssociation& program) {
    return object("", {identifier("program_number", program.getProgramNumber(), 4),
                       identifier("program_map_pid", program.getProgramMapPid(), 4)});
}

/// The entries of program numbers other than 0, which stands for the network.
std::size_t programsIn(const Quor::TPATTable& pat) {
    constexpr QUOR_U32 ENTRY_SIZE = 4;
    const QUOR_U8* const data = pat.getData();
    const QUOR_U32 size = pat.getDataLength() - Quor::TISDBTTable::CRC_LENGTH;
    std::size_t programs = 0;
    for (QUOR_U32 at = Quor::TISDBTVersionedTable::COMMON_HEADER_LENGTH; at + ENTRY_SIZE <= size; at += ENTRY_SIZE) {
        programs += data[at] != 0 || data[at + 1] != 0 ? 1U : 0U;
    }
    return programs;
}

Fields describePat(const Quor::TPATTable& pat) {
    return {
        identifier("transport_stream_id", pat.getTransportStreamID(), 4),
        identifier("network_pid", pat.getNetworkPid(), 4),
        keptOf(listByKey("programs", pat, &Quor::TPATTable::getProgramNumbers, &Quor::TPATTable::get, describeProgram),
               programsIn(pat), "program")};
}

Field describeElementaryStream(const Quor::TProgramMap& stream) {
    Fields fields{identifier("stream_type", stream.getStreamType(), 2).named(names::STREAM_TYPE),
                  identifier("elementary_pid", stream.getElementaryPID(), 4)};
    appendDescriptors(fields, stream);
    return object("", std::move(fields));
}

Fields describePmt(const Quor::TPMTTable& pmt) {
    const Loops loops(pmt);
    Fields fields{identifier("program_number", pmt.getProgramNumber(), 4), identifier("pcr_pid", pmt.getPCRPID(), 4)};
    appendDescriptors(fields, pmt);
    loops.appendLeftOut(fields);
    Field streams = listByPosition<Quor::TPMTTable, Quor::TProgramMap*, QUOR_U8>(
        "elementary_streams", pmt, pmt.size(), &Quor::TPMTTable::getProgramMap, describeElementaryStream);
    loops.appendLeftOutInOrder(streams);
    fields.push_back(std::move(streams));
    return fields;
}

} // namespace

void addProgramTables(Catalogue& catalogue) {
    catalogue.addTable<describePat>();
    catalogue.addTable<describePmt>();
}

} // namespace inspect
