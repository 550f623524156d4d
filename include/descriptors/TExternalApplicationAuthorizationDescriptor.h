#ifndef QUOR_TEXTERNAL_APPLICATION_AUTHORIZATION_DESCRIPTOR_H
#define QUOR_TEXTERNAL_APPLICATION_AUTHORIZATION_DESCRIPTOR_H

#include "descriptors/TExternalApplicationAuthorizationDescriptorItem.h"
#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

#include <list>
#include <string>

namespace Quor {

/// External application authorisation descriptor (ABNT NBR 15606, tag 0x05, in the application information table): the
/// applications of other services that may run with this one. Of several entries of one application the last is kept.
class QUOR_ISDBT_API TExternalApplicationAuthorizationDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x05;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 0;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TExternalApplicationAuthorizationDescriptor(QUOR_U8* data, QUOR_U32 length)
        : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    /// A deep copy of @p source, which must not be null; without data.
    explicit TExternalApplicationAuthorizationDescriptor(TExternalApplicationAuthorizationDescriptor* source);
    ~TExternalApplicationAuthorizationDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives the bytes of the last item, 7; 0 when there is none. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(), or
    ///                     ERROR_INVALID_DESCRIPTOR_LENGTH for an incomplete item. May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TExternalApplicationAuthorizationDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                              QUOR_U16* errorCode);

    /// Adds an item under the key of its identifier; the descriptor owns it from now on. An item with the same key is
    /// displaced and not deleted. Null is ignored.
    void add(TExternalApplicationAuthorizationDescriptorItem* item);

    /// The item of a key (see TApplicationIdentifier::calculateHashID()), owned by the descriptor; null when there is
    /// none.
    TExternalApplicationAuthorizationDescriptorItem* get(std::string hashId) const;

    /// Removes and deletes the item of a key. @return whether there was one.
    QUOR_BOOL remove(std::string hashId);

    /// The number of items.
    QUOR_U32 size() const { return m_pItems.size(); }

    /// The keys in ascending order: a new list, which the caller deletes.
    std::list<std::string>* getApplicationIdentifierHashIDs() const;

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    detail::Items<TExternalApplicationAuthorizationDescriptorItem> m_pItems{};
};

} // namespace Quor

#endif
