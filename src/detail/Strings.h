#ifndef QUOR_DETAIL_STRINGS_H
#define QUOR_DETAIL_STRINGS_H

#include "detail/Bytes.h"
#include "detail/Owned.h"

/// The texts of descriptors, with the rules and log lines of ParserUtils::parseStr().
namespace Quor::detail {

/// Copies a text of a known length. Of length 0 it is read as one behind a length byte, unless @p field is empty.
/// @return the bytes that the text took, modulo 256; -1, with @p text unchanged, when @p field is shorter.
QUOR_S32 readText(const Bytes& field, QUOR_U32 length, Text& text);

/// Copies a text behind a byte with its length. @return the bytes that both took, as readText() does.
QUOR_S32 readPrefixedText(const Bytes& field, Text& text);

/// A copy of characters in the memory of what it is built into.
Text makeText(const char* characters, QUOR_U32 size, Memory& memory);

/// Appends texts that stand one behind the other, each after a byte with its length, until the bytes are used up.
/// @return false at a text that does not fit. One of 255 bytes fails as well: it counts as 0 bytes, so that it could
///         never be passed.
bool readPrefixedTexts(Bytes left, Row<Text>& texts);

} // namespace Quor::detail

#endif
