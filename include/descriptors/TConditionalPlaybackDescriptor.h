#ifndef QUOR_TCONDITIONAL_PLAYBACK_DESCRIPTOR_H
#define QUOR_TCONDITIONAL_PLAYBACK_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"

#include <memory>

namespace Quor {

/// Conditional playback descriptor (tag 0xF8): the conditional access system, and the PID of its data, for the playback
/// of a recording.
class QUOR_ISDBT_API TConditionalPlaybackDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0xF8;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 4;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TConditionalPlaybackDescriptor(QUOR_U8* data, QUOR_U32 length);
    ~TConditionalPlaybackDescriptor() override;

    /// Parses one descriptor.
    /// @param sectionData  the descriptor, from its tag on; it must outlive the use of getData().
    /// @param dataLength   descriptor_length + 2.
    /// @param parsedLength receives dataLength - 2. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TConditionalPlaybackDescriptor* parse(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* parsedLength,
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
    QUOR_U16 m_iCASystemID;
    QUOR_U16 m_iCAPID;
    QUOR_U8 m_iPrivateDataSize;
    std::unique_ptr<QUOR_U8[]> m_pPrivateData;
};

} // namespace Quor

#endif
