#ifndef QUOR_TBOUQUET_NAME_DESCRIPTOR_H
#define QUOR_TBOUQUET_NAME_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

#include <string>

namespace Quor {

/// Bouquet name descriptor (ARIB STD-B10, tag 0x47): the name of the bouquet that a service belongs to.
class QUOR_ISDBT_API TBouquetNameDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x47;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 1;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TBouquetNameDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TBouquetNameDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives the bytes of the name, modulo 256. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(), or
    ///                     ERROR_INVALID_STRING for a name that does not fit. May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TBouquetNameDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// The name as it is on the wire, in the character coding of the broadcast.
    std::string getBouquetName() const { return m_sBouquetName; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    detail::Text m_sBouquetName{};
};

} // namespace Quor

#endif
