#include "tables/TableKinds.h"

#include "DSMCCSection/TDSMCCSectionTable.h"
#include "ait/TAITTable.h"
#include "naming/Names.h"
#include "nit/TNITTable.h"
#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"
#include "sdt/TSDTTable.h"
#include "sdtt/TSDTTTable.h"
#include "tot/TTOTTable.h"
#include "walking/SectionWalk.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

using Header = TableKind::Header;

template <class Table> Quor::TISDBTTable* parseAs(std::uint8_t* data, std::uint32_t size, std::uint16_t* errorCode) {
    return Table::parse(data, size, 1, 1, errorCode, nullptr);
}

} // namespace

// SDTTs have two PIDs: one for fixed receivers, one for portable ones.
const std::array<TableKind, 8> TABLE_KINDS{{
    {PAT, "PAT", "pat", Header::Long, {0x0000}, true, parseAs<Quor::TPATTable>, nullptr},
    {PMT, "PMT", "pmt", Header::Long, {}, true, parseAs<Quor::TPMTTable>, walkProgramMap},
    {NIT, "NIT", "nit", Header::Long, {0x0010}, true, parseAs<Quor::TNITTable>, walkNetworkInformation},
    {SDT, "SDT", "sdt", Header::Long, {0x0011}, true, parseAs<Quor::TSDTTable>, walkServiceDescription},
    {TOT, "TOT", "tot", Header::ShortWithCrc, {0x0014}, false, parseAs<Quor::TTOTTable>, walkTimeOffset},
    {AIT, "AIT", "ait", Header::Long, {}, true, parseAs<Quor::TAITTable>, walkApplicationInformation},
    {SDTT, "SDTT", "sdtt", Header::Long, {0x0023, 0x0028}, false, parseAs<Quor::TSDTTTable>, walkSoftwareDownload},
    {DSMCC_STREAM_DESCRIPTORS,
     "DSM-CC",
     "dsmcc",
     Header::AsItSays,
     {},
     false,
     parseAs<Quor::TDSMCCSectionTable>,
     walkDsmccSection},
}};

const TableKind* tableKind(std::uint8_t tableId) {
    const auto* const found = std::find_if(TABLE_KINDS.begin(), TABLE_KINDS.end(),
                                           [tableId](const TableKind& kind) { return kind.id == tableId; });
    return found == TABLE_KINDS.end() ? nullptr : found;
}

std::string_view tableName(std::uint8_t tableId) {
    const TableKind* const kind = tableKind(tableId);
    return kind == nullptr ? std::string_view{} : kind->name;
}

std::string tableLabel(std::uint8_t tableId) {
    if (const TableKind* const kind = tableKind(tableId)) {
        return std::string(kind->name);
    }
    const std::string_view name = abbreviation(names::TABLE_ID.of(tableId));
    return fmt::format("{}{}0x{:02X}", name, name.empty() ? "" : " ", tableId);
}

} // namespace inspect
