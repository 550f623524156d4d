#ifndef QUOR_TIP_SIGNALING_DESCRIPTOR_H
#define QUOR_TIP_SIGNALING_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"

namespace Quor {

/// IP signalling descriptor (ABNT NBR 15606, tag 0x11, in the application information table): the platform that
/// delivers the applications' IP streams.
class QUOR_ISDBT_API TIPSignalingDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x11;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 3;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TIPSignalingDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    /// A copy of @p source, which must not be null; without data.
    explicit TIPSignalingDescriptor(TIPSignalingDescriptor* source);
    ~TIPSignalingDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives 3. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TIPSignalingDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// platform_id, 24 bits.
    QUOR_U32 getPlatformID() const { return m_iPlatformID; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U32 m_iPlatformID = 0;
};

} // namespace Quor

#endif
