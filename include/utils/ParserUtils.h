#ifndef QUOR_PARSER_UTILS_H
#define QUOR_PARSER_UTILS_H

#include "QuorDefs.h"
#include "QuorISDBTExport.h"

#include <string>

namespace Quor {

/// Extractors for the two kinds of variable-length fields: byte arrays and strings.
class QUOR_ISDBT_API ParserUtils {
public:
    /// Copies @p length bytes into a new array.
    /// @param pData  the bytes; at least @p length of them.
    /// @param length their number.
    /// @param target receives the array, which the caller frees with `delete[]`, or null when @p length is 0. Its old
    ///               value is overwritten, never freed. A null @p target on entry is logged, and the copy is made all
    ///               the same.
    static void parseByteArray(QUOR_U8* pData, QUOR_U8*& target, QUOR_U8 length);

    /// Copies a string field, byte for byte: no character set conversion, zero bytes included.
    /// @param pData     the field; at least @p maxLength bytes.
    /// @param target    receives the string; unchanged on failure.
    /// @param length    the field's length in bytes, or 0 when the first byte of the field holds it (unless @p
    ///                  maxLength is 0 as well, which gives the empty string).
    /// @param maxLength the bytes that are left.
    /// @return the number of bytes that the field took, a length byte included, modulo 256: a prefixed string of 255
    ///         bytes returns 0. -1 when the field is longer than the bytes that are left.
    static QUOR_S32 parseStr(QUOR_U8* pData, std::string& target, QUOR_U32 length, QUOR_U32 maxLength);
};

} // namespace Quor

#endif
