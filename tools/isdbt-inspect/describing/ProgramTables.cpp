#include "describing/Catalogue.h"
#include "describing/Lists.h"
#include "describing/Loops.h"
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

using Quor::TProgramMap;

constexpr CodeName STREAM_TYPES[] = {
    {TProgramMap::STREAM_TYPE_0X01, "MPEG-1 video"},
    {0x02, "MPEG-2 video"}, // the constant of this name has another value
    {TProgramMap::STREAM_TYPE_0X03, "MPEG-1 audio"},
    {TProgramMap::STREAM_TYPE_0X04, "MPEG-2 audio"},
    {TProgramMap::STREAM_TYPE_SECTION, "private sections"},
    {TProgramMap::STREAM_TYPE_PES_PACKAGE, "PES packets with private data"},
    {TProgramMap::STREAM_TYPE_0X07, "MHEG"},
    {TProgramMap::STREAM_TYPE_0X08, "DSM-CC"},
    {TProgramMap::STREAM_TYPE_0X09, "H.222.1"},
    {TProgramMap::STREAM_TYPE_0X0A, "DSM-CC multiprotocol encapsulation"},
    {TProgramMap::STREAM_TYPE_0X0B, "DSM-CC U-N messages"},
    {TProgramMap::STREAM_TYPE_0X0C, "DSM-CC stream descriptors"},
    {TProgramMap::STREAM_TYPE_0X0D, "DSM-CC sections"},
    {TProgramMap::STREAM_TYPE_0X0E, "auxiliary"},
    {TProgramMap::STREAM_TYPE_0X0F, "AAC audio in ADTS"},
    {TProgramMap::STREAM_TYPE_0X10, "MPEG-4 visual"},
    {TProgramMap::STREAM_TYPE_0X11, "AAC audio in LATM"},
    {TProgramMap::STREAM_TYPE_PKG_STREAM_OR_FLEXMUX_STREAM_PES, "MPEG-4 packetized or FlexMux stream in PES packets"},
    {TProgramMap::STREAM_TYPE_PKG_STREAM_OR_FLEXMUX_STREAM_14496, "MPEG-4 packetized or FlexMux stream in sections"},
    {TProgramMap::STREAM_TYPE_DOWN_SYNC_PROTOCOL, "synchronized download protocol"},
    {TProgramMap::STREAM_TYPE_METADATA_TRANSP_BY_PES_PACKAGE, "metadata in PES packets"},
    {TProgramMap::STREAM_TYPE_METADATA_TRANSP_BY_METADATA_SECTION, "metadata in metadata sections"},
    {TProgramMap::STREAM_TYPE_METADATA_TRANSP_BY_DATA_CAROUSEL, "metadata in a data carousel"},
    {TProgramMap::STREAM_TYPE_METADATA_TRANSP_BY_OBJECT_CAROUSEL, "metadata in an object carousel"},
    {TProgramMap::STREAM_TYPE_METADATA_TRANSP_DOWNLOAD_SYNC_PROT, "metadata in the synchronized download protocol"},
    {TProgramMap::STREAM_TYPE_IPMP_STREAM, "MPEG-2 IPMP"},
    {TProgramMap::STREAM_TYPE_VIDEO, "H.264 video"},
    {TProgramMap::STREAM_TYPE_DATA_PIPING, "data piping"},
    {TProgramMap::STREAM_TYPE_IPMP_STREAM_2, "IPMP"},
    {TProgramMap::STREAM_TYPE_AC3, "AC-3 audio"},
};

Field describeElementaryStream(const TProgramMap& stream) {
    Fields fields{identifier("stream_type", stream.getStreamType(), 2).named(STREAM_TYPES),
                  identifier("elementary_pid", stream.getElementaryPID(), 4)};
    appendDescriptors(fields, stream);
    return object("", std::move(fields));
}

Fields describePmt(const Quor::TPMTTable& pmt) {
    const Loops loops(pmt);
    Fields fields{identifier("program_number", pmt.getProgramNumber(), 4), identifier("pcr_pid", pmt.getPCRPID(), 4)};
    appendDescriptors(fields, pmt);
    loops.appendLeftOut(fields);
    Field streams = listByPosition<Quor::TPMTTable, TProgramMap*, QUOR_U8>(
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
