#pragma once

#include "packets/Pid.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Quor {
class TISDBTTable;
} // namespace Quor

namespace inspect {

class SectionWalk;

// The table_id of each table that the library understands.
constexpr std::uint8_t PAT = 0x00;
constexpr std::uint8_t PMT = 0x02;
constexpr std::uint8_t DSMCC_STREAM_DESCRIPTORS = 0x3D;
constexpr std::uint8_t NIT = 0x40;
constexpr std::uint8_t SDT = 0x42;
constexpr std::uint8_t TOT = 0x73;
constexpr std::uint8_t AIT = 0x74;
constexpr std::uint8_t SDTT = 0xC3;

// Those of carousels, which it does not.
constexpr std::uint8_t DSMCC_MESSAGES = 0x3B;
constexpr std::uint8_t DSMCC_BLOCKS = 0x3C;

constexpr bool isCarouselTable(std::uint8_t tableId) {
    return tableId == DSMCC_MESSAGES || tableId == DSMCC_BLOCKS;
}

/// All that the tool knows of a table that the library understands.
struct TableKind {
    enum class Header {
        Long,         ///< whatever section_syntax_indicator says
        ShortWithCrc, ///< and yet a CRC_32 at the end
        AsItSays
    };

    std::uint8_t id;
    std::string_view name;   ///< "DSM-CC"
    std::string_view option; ///< what it is called in the command line: "dsmcc"
    Header header;
    std::array<std::optional<Pid>, 2> pids; ///< where it always is; others are signalled
    bool ofEveryMultiplex;                  ///< without it a receiver finds nothing, or does not know what to call it

    /// Both switches of the library's parse are on, so that their order, which differs from table to table, does not
    /// matter. No earlier table is given: sections with a number above 0 are refused beside one.
    Quor::TISDBTTable* (*parse)(std::uint8_t* data, std::uint32_t size, std::uint16_t* errorCode);

    void (*walk)(SectionWalk& walk); ///< its descriptor loops; null when it has none
};

extern const std::array<TableKind, 8> TABLE_KINDS;

/// Null for a table that the library does not understand.
const TableKind* tableKind(std::uint8_t tableId);

/// The name of a table that the library understands; empty for others.
std::string_view tableName(std::uint8_t tableId);

/// The same, and of others what standards call them: "EIT p/f 0x4E"; "0x0B" when they do not.
std::string tableLabel(std::uint8_t tableId);

} // namespace inspect
