#ifndef QUOR_TAPPLICATION_NAME_DESCRIPTOR_H
#define QUOR_TAPPLICATION_NAME_DESCRIPTOR_H

#include "descriptors/TApplicationNameDescriptorItem.h"
#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

#include <list>
#include <string>

namespace Quor {

/// Application name descriptor (ABNT NBR 15606, tag 0x01, in the application information table): the names of an
/// application by language. Of several names in one language the last is kept.
class QUOR_ISDBT_API TApplicationNameDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x01;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 4;

    /// An empty descriptor without data.
    TApplicationNameDescriptor() : TApplicationNameDescriptor(nullptr, 0) {}
    /// An empty descriptor over the caller's bytes, which are not copied.
    TApplicationNameDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    /// A deep copy of @p source, which must not be null; without data.
    explicit TApplicationNameDescriptor(TApplicationNameDescriptor* source);
    ~TApplicationNameDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives the bytes of the last item. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(), or
    ///                     ERROR_INVALID_DESCRIPTOR_LENGTH for an item that is not valid. May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TApplicationNameDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                             QUOR_U16* errorCode);

    /// The number of languages.
    QUOR_U32 size() const { return m_pItems.size(); }

    /// The item of a language, owned by the descriptor; null when there is none.
    TApplicationNameDescriptorItem* get(std::string languageCode) const;

    /// Adds an item, which the descriptor owns from now on. An item of the same language is displaced and not deleted.
    /// Null is ignored.
    void add(TApplicationNameDescriptorItem* item);

    /// Removes and deletes the item of a language. @return whether there was one.
    QUOR_BOOL remove(std::string languageCode);

    /// The language codes in ascending order: a new list, which the caller deletes.
    std::list<std::string>* getLanguageCodes() const;

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    detail::Items<TApplicationNameDescriptorItem> m_pItems{};
};

} // namespace Quor

#endif
