#include "parsing/SectionParser.h"

#include "DSMCCSection/TDSMCCSectionTable.h"
#include "ait/TAITTable.h"
#include "nit/TNITTable.h"
#include "parsing/LogLines.h"
#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"
#include "sdt/TSDTTable.h"
#include "sdtt/TSDTTTable.h"
#include "sections/TableIds.h"
#include "tot/TTOTTable.h"

#include <algorithm>
#include <iterator>

namespace inspect {

namespace {

using Quor::TISDBTTable;

struct Kind {
    std::uint8_t tableId;
    std::string_view name;
    TISDBTTable* (*parse)(QUOR_U8* data, QUOR_U32 size, QUOR_U16* errorCode);
};

/// Both switches are on, so that their order, which differs from table to table, does not matter. No earlier table is
/// given: sections with a number above 0 are refused beside one.
template <class Table> TISDBTTable* parseAs(QUOR_U8* data, QUOR_U32 size, QUOR_U16* errorCode) {
    return Table::parse(data, size, 1, 1, errorCode, nullptr);
}

constexpr Kind KINDS[] = {
    {PAT, "PAT", parseAs<Quor::TPATTable>},
    {PMT, "PMT", parseAs<Quor::TPMTTable>},
    {DSMCC_STREAM_DESCRIPTORS, "DSM-CC", parseAs<Quor::TDSMCCSectionTable>},
    {NIT, "NIT", parseAs<Quor::TNITTable>},
    {SDT, "SDT", parseAs<Quor::TSDTTable>},
    {TOT, "TOT", parseAs<Quor::TTOTTable>},
    {AIT, "AIT", parseAs<Quor::TAITTable>},
    {SDTT, "SDTT", parseAs<Quor::TSDTTTable>},
};

const Kind* find(std::uint8_t tableId) {
    const auto* const found = std::find_if(std::begin(KINDS), std::end(KINDS),
                                           [tableId](const Kind& kind) { return kind.tableId == tableId; });
    return found == std::end(KINDS) ? nullptr : found;
}

struct ErrorName {
    QUOR_U16 code;
    std::string_view name;
};

constexpr ErrorName ERROR_NAMES[] = {
    {TISDBTTable::ERROR_OK, "ERROR_OK"},
    {TISDBTTable::ERROR_INCOMPATIBLE_TABLE_TYPE, "ERROR_INCOMPATIBLE_TABLE_TYPE"},
    {TISDBTTable::ERROR_TABLE_NOT_UPDATED, "ERROR_TABLE_NOT_UPDATED"},
    {TISDBTTable::ERROR_INVALID_DATA, "ERROR_INVALID_DATA"},
    {TISDBTTable::ERROR_INVALID_DATA_LENGTH, "ERROR_INVALID_DATA_LENGTH"},
    {TISDBTTable::ERROR_INVALID_TABLE_ID, "ERROR_INVALID_TABLE_ID"},
    {TISDBTTable::ERROR_INVALID_SECTION_LEN_TOO_BIG, "ERROR_INVALID_SECTION_LEN_TOO_BIG"},
    {TISDBTTable::ERROR_INVALID_CRC32, "ERROR_INVALID_CRC32"},
    {TISDBTTable::ERROR_INVALID_DESCRIPTOR_TAG, "ERROR_INVALID_DESCRIPTOR_TAG"},
    {TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, "ERROR_INVALID_DESCRIPTOR_LENGTH"},
    {TISDBTTable::ERROR_INVALID_STRING, "ERROR_INVALID_STRING"},
    {TISDBTTable::ERROR_INVALID_ITEM, "ERROR_INVALID_ITEM"},
};

} // namespace

std::string_view tableName(std::uint8_t tableId) {
    const Kind* const kind = find(tableId);
    return kind == nullptr ? std::string_view{} : kind->name;
}

ParsedSection parse(const Section& section) {
    ParsedSection parsed{tableName(section.tableId()), nullptr, TISDBTTable::ERROR_OK, {}};
    LogLines log;
    if (const Kind* const kind = find(section.tableId())) {
        parsed.table.reset(kind->parse(section.data(), static_cast<QUOR_U32>(section.size()), &parsed.errorCode));
    }
    parsed.logLines = log.take();
    return parsed;
}

std::string_view errorName(QUOR_U16 errorCode) {
    const auto* const found = std::find_if(std::begin(ERROR_NAMES), std::end(ERROR_NAMES),
                                           [errorCode](const ErrorName& each) { return each.code == errorCode; });
    return found == std::end(ERROR_NAMES) ? std::string_view{} : found->name;
}

} // namespace inspect
