#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace inspect {

/// A text of Brazil, or of a country that broadcasts as Brazil does, without what is no character.
struct LatinAmericanText {
    std::string characters;  ///< of ISO/IEC 8859-15; '\n' where a line ends
    std::size_t leftOut = 0; ///< how many control codes it has that mean nothing there
};

/// Takes a text whole. Each byte is a character, but for the codes that encoders put between them which also serve
/// other regions: they are left out.
LatinAmericanText readLatinAmerican(std::string_view raw);

} // namespace inspect
