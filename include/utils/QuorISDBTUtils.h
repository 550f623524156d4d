#ifndef QUOR_ISDBT_UTILS_H
#define QUOR_ISDBT_UTILS_H

#include "QuorDefs.h"
#include "QuorISDBTExport.h"

namespace Quor {

/// Conversions that every table and descriptor parser shares. All operations are static and keep no state.
class QUOR_ISDBT_API ISDBTUtils {
public:
    /// The Modified Julian Date of 1970-01-01, the day on which Unix time begins.
    static constexpr QUOR_S32 MJD_1970 = 40587;

    ISDBTUtils();
    virtual ~ISDBTUtils();

    /// Stores @p value through @p errorCode. A null @p errorCode is allowed and nothing happens then.
    static void setErrorCode(QUOR_U16* errorCode, QUOR_U16 value);

    /// Converts two binary coded decimal digits: high nibble times 10 plus low nibble.
    /// Digits above 9 are not rejected: 0xAB gives 111.
    static U8 bcd2U8(QUOR_U8 bcdValue);

    /// Converts a Modified Julian Date (days) to seconds since 1970-01-01 00:00:00 UTC, at midnight of that day.
    /// Dates before 1970-01-02 give 0. The result has 32 bits and wraps to negative values from 2038-01-20 on.
    static S32 mjd2unix(QUOR_U16 mjdDate);

    /// Computes the CRC-32 of ISO/IEC 13818-1 (polynomial 0x04C11DB7, most significant bit first), but with the
    /// initial value 0, so that the result differs from a section's CRC_32 field. Traces every step to standard
    /// output.
    /// @param data   the bytes; at least @p length of them.
    /// @param length their number.
    static U32 getSectionCRC32(QUOR_U8* data, QUOR_U32 length);
};

} // namespace Quor

#endif
