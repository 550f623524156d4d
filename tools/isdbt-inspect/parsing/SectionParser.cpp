#include "parsing/SectionParser.h"

#include "parsing/LogLines.h"
#include "tables/TableKinds.h"

#include <algorithm>
#include <iterator>

namespace inspect {

namespace {

using Quor::TISDBTTable;

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

ParsedSection parse(const Section& section) {
    ParsedSection parsed{nullptr, TISDBTTable::ERROR_OK, {}};
    LogLines log;
    if (const TableKind* const kind = tableKind(section.tableId())) {
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
