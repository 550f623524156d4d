#ifndef QUOR_TPARTIAL_RECEPTION_DESCRIPTOR_H
#define QUOR_TPARTIAL_RECEPTION_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

namespace Quor {

/// Partial reception descriptor (ARIB STD-B10, tag 0xFB, in the network information table): the services that a
/// receiver of the middle segment alone can show.
class QUOR_ISDBT_API TPartialReceptionDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0xFB;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 2;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TPartialReceptionDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TPartialReceptionDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives the bytes of the body, `length` - 2. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TPartialReceptionDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                              QUOR_U16* errorCode);

    /// The number of services, modulo 256. An odd last byte is no service.
    QUOR_U8 getServiceIDCount() const { return m_iServiceIDCount; }

    /// The service_ids in wire order, owned by the descriptor; null when there are none.
    QUOR_U16* getServiceIDs() const { return m_pServiceIDs.get(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U8 m_iServiceIDCount = 0;
    detail::Array<QUOR_U16> m_pServiceIDs{};
};

} // namespace Quor

#endif
