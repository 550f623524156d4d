#ifndef QUOR_TSTREAM_EVENT_DESCRIPTOR_H
#define QUOR_TSTREAM_EVENT_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

namespace Quor {

/// Stream event descriptor (ISO/IEC 13818-6, tag 0x04 of DSM-CC sections): an event for applications at a normal play
/// time.
class QUOR_ISDBT_API TStreamEventDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x04;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 10;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TStreamEventDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TStreamEventDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives length - 2. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TStreamEventDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// eventId, 0 to 65535.
    QUOR_U16 getEventID() const { return m_iEventID; }

    /// Bit 32 of eventNPT, 0 or 1.
    QUOR_U8 getEventNPTH() const { return m_iEventNPTH; }

    /// The low 32 bits of eventNPT, in units of 1/90000 s.
    QUOR_U32 getEventNPTL() const { return m_iEventNPTL; }

    /// The number of bytes of getPrivateData(), kept in 8 bits.
    QUOR_U8 getPrivateDataSize() const { return m_iPrivateDataSize; }

    /// privateDataByte, owned by the descriptor; null when there is none.
    QUOR_U8* getPrivateData() const { return m_pPrivateData.get(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U16 m_iEventID = 0;
    QUOR_U8 m_iEventNPTH = 0;
    QUOR_U32 m_iEventNPTL = 0;
    QUOR_U8 m_iPrivateDataSize = 0;
    detail::Array<QUOR_U8> m_pPrivateData{};
};

} // namespace Quor

#endif
