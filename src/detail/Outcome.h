#ifndef QUOR_DETAIL_OUTCOME_H
#define QUOR_DETAIL_OUTCOME_H

#include "TISDBTTable.h"
#include "utils/QuorISDBTUtils.h"

namespace Quor::detail {

/// How the decoding of an object ended: with the number of bytes that its parse reports, or with the error code of the
/// failure. One word, which travels from the decoder that knows it up to the parse that was called.
class [[nodiscard]] Outcome {
public:
    /// Success with a number for the caller's parsedLength. No section, and no receiver's memory, comes near FAILED.
    static constexpr Outcome done(QUOR_U32 length) { return Outcome(length < SILENT ? length : SILENT - 1); }

    /// Success that leaves the caller's parsedLength as it is.
    static constexpr Outcome done() { return Outcome(WITHOUT_LENGTH); }

    /// Success that leaves the caller's error code as it is, too.
    static constexpr Outcome doneSilently() { return Outcome(SILENT); }

    static constexpr Outcome failed(QUOR_U16 code) { return Outcome(FAILED | code); }

    constexpr bool succeeded() const { return m_iWord < FAILED; }

    /// The number of a success that has one.
    constexpr QUOR_U32 length() const { return m_iWord; }

    /// Writes what the caller asked for. Both pointers may be null.
    void report(QUOR_U32* parsedLength, QUOR_U16* errorCode) const {
        if (parsedLength != nullptr && m_iWord < SILENT) {
            *parsedLength = m_iWord;
        }
        if (m_iWord != SILENT) {
            ISDBTUtils::setErrorCode(errorCode, succeeded() ? TISDBTTable::ERROR_OK : static_cast<QUOR_U16>(m_iWord));
        }
    }

private:
    static constexpr QUOR_U32 FAILED = 0xFFFF0000;
    static constexpr QUOR_U32 WITHOUT_LENGTH = FAILED - 1;
    static constexpr QUOR_U32 SILENT = FAILED - 2;

    constexpr explicit Outcome(QUOR_U32 word) : m_iWord(word) {}

    QUOR_U32 m_iWord;
};

} // namespace Quor::detail

#endif
