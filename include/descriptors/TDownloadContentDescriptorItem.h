#ifndef QUOR_TDOWNLOAD_CONTENT_DESCRIPTOR_ITEM_H
#define QUOR_TDOWNLOAD_CONTENT_DESCRIPTOR_ITEM_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"
#include "detail/Owned.h"

namespace Quor {

/// One module of the data carousel that carries a download.
class QUOR_ISDBT_API TDownloadContentDescriptorItem : public TISDBTMemory {
public:
    TDownloadContentDescriptorItem() = default;
    virtual ~TDownloadContentDescriptorItem();

    /// Parses one module.
    /// @param data         the module's entry.
    /// @param length       bytes left in the descriptor.
    /// @param parsedLength receives the bytes that the entry took: 7 and its module info. May be null.
    /// @param errorCode    ERROR_OK, ERROR_INVALID_DATA_LENGTH, or ERROR_INVALID_STRING for module info that reaches
    ///                     beyond the bytes left. May be null.
    /// @return a new module, which the caller deletes, or null.
    static TDownloadContentDescriptorItem* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                 QUOR_U16* errorCode);

    /// module_id with its two bytes swapped: 12 34 on the wire is 0x3412.
    QUOR_U16 getModuleID() const { return m_iModuleID; }

    /// module_size in bytes.
    QUOR_U32 getModuleSize() const { return m_iModuleSize; }

    /// module_info_length: the bytes of getModuleInfo().
    QUOR_U8 getModuleInfoLength() const { return m_iModuleInfoLength; }

    /// module_info, owned by this object; null when its length is 0.
    QUOR_U8* getModuleInfo() const { return m_iModuleInfo.get(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& left);

    QUOR_U16 m_iModuleID = 0;
    QUOR_U32 m_iModuleSize = 0;
    QUOR_U8 m_iModuleInfoLength = 0;
    detail::Array<QUOR_U8> m_iModuleInfo{};
};

} // namespace Quor

#endif
