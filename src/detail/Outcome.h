#ifndef QUOR_DETAIL_OUTCOME_H
#define QUOR_DETAIL_OUTCOME_H

#include "TISDBTTable.h"
#include "utils/QuorISDBTUtils.h"

#include <memory>

namespace Quor::detail {

/// How the decoding of an object ended, and what its caller is told.
class Outcome {
public:
    /// Success.
    static Outcome done() { return Outcome(true, true, TISDBTTable::ERROR_OK); }

    /// Success with a number for the caller's parsedLength or itemLength.
    static Outcome done(QUOR_U32 length) {
        Outcome outcome = done();
        outcome.m_bHasLength = true;
        outcome.m_iLength = length;
        return outcome;
    }

    /// Success that leaves the caller's error code as it is.
    static Outcome doneSilently() { return Outcome(true, false, TISDBTTable::ERROR_OK); }

    static Outcome failed(QUOR_U16 code) { return Outcome(false, true, code); }

    /// A failure below, which has already written the caller's error code.
    static Outcome failedBelow() { return Outcome(false, false, TISDBTTable::ERROR_OK); }

    bool succeeded() const { return m_bSucceeded; }

    /// Writes what the caller asked for. Both pointers may be null.
    void report(QUOR_U32* length, QUOR_U16* errorCode) const {
        if (m_bHasLength && length != nullptr) {
            *length = m_iLength;
        }
        if (m_bHasCode) {
            ISDBTUtils::setErrorCode(errorCode, m_iCode);
        }
    }

private:
    Outcome(bool succeeded, bool hasCode, QUOR_U16 code)
        : m_bSucceeded(succeeded), m_bHasCode(hasCode), m_iCode(code) {}

    bool m_bSucceeded;
    bool m_bHasCode;
    QUOR_U16 m_iCode;
    bool m_bHasLength = false;
    QUOR_U32 m_iLength = 0;
};

/// Decodes into a new object, which becomes visible only when all of it proved sound.
/// @param decode Outcome(T&)
/// @return the object, owned by the caller, or null.
template <class T, class Decode>
T* decodeInto(std::unique_ptr<T> object, QUOR_U32* length, QUOR_U16* errorCode, Decode decode) {
    const Outcome outcome = decode(*object);
    outcome.report(length, errorCode);
    return outcome.succeeded() ? object.release() : nullptr;
}

} // namespace Quor::detail

#endif
