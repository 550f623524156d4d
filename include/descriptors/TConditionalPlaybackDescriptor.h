#ifndef QUOR_TCONDITIONAL_PLAYBACK_DESCRIPTOR_H
#define QUOR_TCONDITIONAL_PLAYBACK_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

namespace Quor {

/// Conditional playback descriptor (tag 0xF8): the conditional access system, and the PID of its data, for the playback
/// of a recording.
class QUOR_ISDBT_API TConditionalPlaybackDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0xF8;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 4;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TConditionalPlaybackDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TConditionalPlaybackDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives length - 2. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TConditionalPlaybackDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                 QUOR_U16* errorCode);

    /// CA_system_id, 0 to 65535.
    QUOR_U16 getCASystemID() const { return m_iCASystemID; }

    /// CA_PID, 13 bits.
    QUOR_U16 getCAPID() const { return m_iCAPID; }

    /// The number of bytes of getPrivateData(), kept in 8 bits.
    QUOR_U8 getPrivateDataSize() const { return m_iPrivateDataSize; }

    /// private_data_byte, owned by the descriptor; null when there is none.
    QUOR_U8* getPrivateData() const { return m_pPrivateData.get(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U16 m_iCASystemID = 0;
    QUOR_U16 m_iCAPID = 0;
    QUOR_U8 m_iPrivateDataSize = 0;
    detail::Array<QUOR_U8> m_pPrivateData{};
};

} // namespace Quor

#endif
