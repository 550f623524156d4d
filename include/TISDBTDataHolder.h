#ifndef QUOR_TISDBT_DATA_HOLDER_H
#define QUOR_TISDBT_DATA_HOLDER_H

#include "QuorDefs.h"
#include "QuorISDBTExport.h"

namespace Quor {

/// The raw bytes that an object was built from: a private copy (tables) or a view of the caller's buffer
/// (descriptors, applications), which must then live as long as getData() is used.
class QUOR_ISDBT_API TISDBTDataHolder {
public:
    /// @param sectionData  the bytes. Null is kept as null; nothing is copied then.
    /// @param dataLength   their number.
    /// @param allocateData non-zero: keep a private copy; 0: keep @p sectionData itself, without ownership.
    TISDBTDataHolder(QUOR_U8* sectionData, QUOR_U32 dataLength, int allocateData);
    virtual ~TISDBTDataHolder();

    TISDBTDataHolder(const TISDBTDataHolder&) = delete;
    TISDBTDataHolder& operator=(const TISDBTDataHolder&) = delete;

    /// The bytes, owned by this object or by whoever owns the section buffer. Null when there are none.
    QUOR_U8* getData() const { return m_pData; }

    /// The number of bytes as it was given at construction.
    QUOR_U32 getDataLength() const { return m_iDataLength; }

private:
    QUOR_U8* m_pData;
    QUOR_U32 m_iDataLength;
    QUOR_BOOL m_bAllocated;
};

} // namespace Quor

#endif
