#ifndef QUOR_TEXTERNAL_APPLICATION_AUTHORIZATION_DESCRIPTOR_ITEM_H
#define QUOR_TEXTERNAL_APPLICATION_AUTHORIZATION_DESCRIPTOR_ITEM_H

#include "ait/TApplicationIdentifier.h"
#include "detail/Owned.h"

namespace Quor {

/// An application of another service that may go on running beside those of this one.
class QUOR_ISDBT_API TExternalApplicationAuthorizationDescriptorItem : public TISDBTMemory {
public:
    /// Quirk: not the length of an item, which has 7 bytes.
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 1;

    /// No identifier, priority 0.
    TExternalApplicationAuthorizationDescriptorItem() = default;
    /// A deep copy of @p source, which must not be null.
    explicit TExternalApplicationAuthorizationDescriptorItem(TExternalApplicationAuthorizationDescriptorItem* source);
    virtual ~TExternalApplicationAuthorizationDescriptorItem();

    /// Parses one item of 7 bytes.
    /// @param data         the item.
    /// @param length       bytes left in the descriptor.
    /// @param parsedLength receives 7. May be null.
    /// @param errorCode    ERROR_OK or ERROR_INVALID_DATA_LENGTH. May be null.
    /// @return a new item, which the caller deletes, or null.
    static TExternalApplicationAuthorizationDescriptorItem* parse(QUOR_U8* data, QUOR_U32 length,
                                                                  QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// organisation_id and application_id, owned by the item; null in one that was not parsed.
    TApplicationIdentifier* getApplicationIdentifier() const { return m_pAppIdentifier.get(); }

    /// application_priority, 0 to 255.
    QUOR_U8 getPriority() const { return m_iPriority; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& left);

    std::unique_ptr<TApplicationIdentifier> m_pAppIdentifier{};
    QUOR_U8 m_iPriority = 0;
};

} // namespace Quor

#endif
