#ifndef QUOR_TISDBT_DATA_HOLDER_H
#define QUOR_TISDBT_DATA_HOLDER_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"

namespace Quor {

/// The raw bytes that an object was built from: a private copy (tables) or a view of the caller's buffer
/// (descriptors, applications), which must then live as long as getData() is used.
class QUOR_ISDBT_API TISDBTDataHolder : public TISDBTMemory {
public:
    /// @param data         the bytes. Null is kept as null; nothing is copied then.
    /// @param length       their number.
    /// @param allocateData non-zero: keep a private copy; 0: keep @p data itself, without ownership.
    TISDBTDataHolder(QUOR_U8* data, QUOR_U32 length, int allocateData);
    virtual ~TISDBTDataHolder();

    TISDBTDataHolder(const TISDBTDataHolder&) = delete;
    TISDBTDataHolder& operator=(const TISDBTDataHolder&) = delete;

    /// The bytes, owned by this object or by whoever owns the section buffer. Null when there are none.
    QUOR_U8* getData() const { return m_pData; }

    /// The number of bytes as it was given at construction.
    QUOR_U32 getDataLength() const { return m_iDataLength; }

private:
    friend struct detail::Access;

    QUOR_U8* m_pData;
    QUOR_U32 m_iDataLength;
    bool m_bAllocated;
};

} // namespace Quor

#endif
