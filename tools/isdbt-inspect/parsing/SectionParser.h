#pragma once

#include "TISDBTTable.h"
#include "sections/Section.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {

/// What the library says to a section.
struct ParsedSection {
    std::unique_ptr<Quor::TISDBTTable> table; ///< null when it rejects the section; refers to the section's bytes
    QUOR_U16 errorCode;
    std::vector<std::string> logLines;
};

/// Hands a section of a table that the library understands to it.
ParsedSection parse(const Section& section);

/// The name of an error code, as the constant of TISDBTTable is called; empty for others.
std::string_view errorName(QUOR_U16 errorCode);

} // namespace inspect
