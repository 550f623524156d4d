#ifndef QUOR_TCOMPATIBILITY_DESCRIPTOR_SUB_ITEM_H
#define QUOR_TCOMPATIBILITY_DESCRIPTOR_SUB_ITEM_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"
#include "detail/Owned.h"

namespace Quor {

/// One subdescriptor of a compatibility descriptor's item: additional information of a type of its own.
class QUOR_ISDBT_API TCompatibilityDescriptorSubItem : public TISDBTMemory {
public:
    TCompatibilityDescriptorSubItem() = default;
    virtual ~TCompatibilityDescriptorSubItem();

    /// Parses one subdescriptor.
    /// @param data         the subdescriptor.
    /// @param length       bytes left in the item.
    /// @param parsedLength receives the bytes that the subdescriptor took: 2 and its additional information. May be
    ///                     null.
    /// @param errorCode    ERROR_OK, ERROR_INVALID_DATA_LENGTH, or ERROR_INVALID_STRING for additional information that
    ///                     reaches beyond the bytes left. May be null.
    /// @return a new subdescriptor, which the caller deletes, or null.
    static TCompatibilityDescriptorSubItem* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                  QUOR_U16* errorCode);

    /// subDescriptorType, 0 to 255.
    QUOR_U8 getSubDescriptorType() const { return m_iSubDescriptorType; }

    /// subDescriptorLength: the bytes of getAdditionalInformation().
    QUOR_U8 getAdditionalInformationLength() const { return m_iAdditionalInformationLength; }

    /// additionalInformation, owned by this object; null when its length is 0.
    QUOR_U8* getAdditionalInformation() const { return m_iAdditionalInformation.get(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& left);

    QUOR_U8 m_iSubDescriptorType = 0;
    QUOR_U8 m_iAdditionalInformationLength = 0;
    detail::Array<QUOR_U8> m_iAdditionalInformation{};
};

} // namespace Quor

#endif
