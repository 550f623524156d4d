#ifndef QUOR_TDIGITAL_COPY_CONTROL_DESCRIPTOR_ITEM_H
#define QUOR_TDIGITAL_COPY_CONTROL_DESCRIPTOR_ITEM_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"

namespace Quor {

/// How one component of a service may be recorded and copied. Mind that no component_tag is read: the item begins with
/// its flags.
class QUOR_ISDBT_API TDigitalCopyControlDescriptorItem : public TISDBTMemory {
public:
    TDigitalCopyControlDescriptorItem() = default;
    virtual ~TDigitalCopyControlDescriptorItem();

    /// Parses one item of one or two bytes.
    /// @param data         the item.
    /// @param length       bytes left in the descriptor.
    /// @param parsedLength receives the bytes that the item took, 2 with a maximum bit rate and 1 without. May be null.
    /// @param errorCode    ERROR_OK, ERROR_INVALID_DATA_LENGTH when there is no byte, or
    ///                     ERROR_INVALID_DESCRIPTOR_LENGTH when the maximum bit rate is missing. May be null.
    /// @return a new item, which the caller deletes, or null.
    static TDigitalCopyControlDescriptorItem* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                    QUOR_U16* errorCode);

    /// digital_recording_control_data, 0 to 3.
    QUOR_U8 getDigitalRecordingControlData() const { return m_iDigitalRecCtrlData; }

    /// maximum_bitrate_flag: whether getMaximumBitrate() comes from the wire.
    QUOR_BOOL hasMaximumBitrate() const { return m_bMaximumBitrate; }

    /// copy_control_type, 0 to 3, with the values of TDigitalCopyControlDescriptor.
    QUOR_U8 getCopyControlType() const { return m_iCopyControlType; }

    /// APS_control_data, 0 to 3: the analogue protection; 0 as well when getCopyControlType() is 0.
    QUOR_U8 getAPSControlData() const { return m_iAPSControlData; }

    /// maximum_bit_rate in units of 0.25 Mbit/s; 0 unless hasMaximumBitrate().
    QUOR_U8 getMaximumBitrate() const { return m_iMaximumBitrate; }

protected:
    /// component_tag is not read from the wire; the place is kept for it.
    QUOR_U8 m_iComponentTag = 0;

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& left);

    QUOR_U8 m_iDigitalRecCtrlData = 0;
    QUOR_BOOL m_bMaximumBitrate = false;
    QUOR_U8 m_iCopyControlType = 0;
    QUOR_U8 m_iAPSControlData = 0;
    QUOR_U8 m_iMaximumBitrate = 0;
};

} // namespace Quor

#endif
