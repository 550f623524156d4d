#ifndef QUOR_TCONTENT_AVAILABILITY_DESCRIPTOR_H
#define QUOR_TCONTENT_AVAILABILITY_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"

namespace Quor {

/// Content availability descriptor (ARIB STD-B10, tag 0xDE): limits on the output and the temporary storage of a
/// content. The three flags are kept inverted: a 0 bit on the wire reads as true.
class QUOR_ISDBT_API TContentAvailabilityDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0xDE;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 1;

    /// @name Values of getRetentionState()
    /// @{
    static constexpr QUOR_U8 RETENTION_STATE_NO_LIMIT = 0;
    static constexpr QUOR_U8 RETENTION_STATE_ONE_WEEK = 1;
    static constexpr QUOR_U8 RETENTION_STATE_2_DAYS = 2;
    static constexpr QUOR_U8 RETENTION_STATE_1_DAY = 3;
    static constexpr QUOR_U8 RETENTION_STATE_12_HOURS = 4;
    static constexpr QUOR_U8 RETENTION_STATE_6_HOURS = 5;
    static constexpr QUOR_U8 RETENTION_STATE_3_HOURS = 6;
    static constexpr QUOR_U8 RETENTION_STATE_1_HALF_HOUR = 7;
    /// @}

    /// An empty descriptor over the caller's bytes, which are not copied.
    TContentAvailabilityDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TContentAvailabilityDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives length, header included. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TContentAvailabilityDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                 QUOR_U16* errorCode);

    /// True when image_constraint_token is 0: the image quality of analogue outputs is constrained.
    QUOR_BOOL isImageConstrained() const { return m_bImageConstraintToken; }

    /// True when retention_mode is 0.
    QUOR_BOOL isRetentionAllowed() const { return m_bRetentionMode; }

    /// retention_state, 0 to 7: how long a temporary copy may be kept.
    QUOR_U8 getRetentionState() const { return m_iRetentionState; }

    /// True when encryption_mode is 0.
    QUOR_BOOL isEncryptionModeEnabled() const { return m_bEncryptionMode; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_BOOL m_bImageConstraintToken = false;
    QUOR_BOOL m_bRetentionMode = false;
    QUOR_U8 m_iRetentionState = 0;
    QUOR_BOOL m_bEncryptionMode = false;
};

} // namespace Quor

#endif
