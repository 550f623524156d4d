#ifndef QUOR_TCA_IDENTIFIER_DESCRIPTOR_H
#define QUOR_TCA_IDENTIFIER_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

namespace Quor {

/// CA identifier descriptor (ARIB STD-B10, tag 0x53): the conditional access systems of a service.
class QUOR_ISDBT_API TCAIdentifierDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x53;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 2;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TCAIdentifierDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TCAIdentifierDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives length - 2. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TCAIdentifierDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// The number of identifiers, kept in 8 bits. An odd last byte of the body is no identifier.
    QUOR_U8 getCASystemIDCount() const { return m_iCASystemIDCount; }

    /// The CA_system_id values in wire order, owned by the descriptor; null in a descriptor that was not parsed.
    QUOR_U16* getCASystemIDs() const { return m_pCASystemIDs.get(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U8 m_iCASystemIDCount = 0;
    detail::Array<QUOR_U16> m_pCASystemIDs{};
};

} // namespace Quor

#endif
