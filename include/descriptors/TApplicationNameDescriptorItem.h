#ifndef QUOR_TAPPLICATION_NAME_DESCRIPTOR_ITEM_H
#define QUOR_TAPPLICATION_NAME_DESCRIPTOR_ITEM_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"
#include "detail/Owned.h"

#include <string>

namespace Quor {

/// The name of an application in one language.
class QUOR_ISDBT_API TApplicationNameDescriptorItem : public TISDBTMemory {
public:
    /// Empty strings.
    TApplicationNameDescriptorItem() = default;
    /// @param languageCode ISO_639_language_code, three letters.
    /// @param name         application_name.
    TApplicationNameDescriptorItem(std::string languageCode, std::string name);
    /// A copy of @p source, which must not be null.
    explicit TApplicationNameDescriptorItem(TApplicationNameDescriptorItem* source);
    virtual ~TApplicationNameDescriptorItem();

    /// Parses one item.
    /// @param data         the item.
    /// @param length       bytes left in the descriptor.
    /// @param parsedLength receives the bytes that the item took, modulo 256. May be null.
    /// @param errorCode    ERROR_OK, ERROR_INVALID_DATA_LENGTH or ERROR_INVALID_STRING. May be null.
    /// @return a new item, which the caller deletes, or null.
    static TApplicationNameDescriptorItem* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                 QUOR_U16* errorCode);

    /// ISO_639_language_code, three letters as received.
    std::string getLanguageCode() const { return m_sLanguageCode; }

    /// application_name, as received.
    std::string getName() const { return m_sName; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& left);

    detail::Text m_sLanguageCode{};
    detail::Text m_sName{};
};

} // namespace Quor

#endif
