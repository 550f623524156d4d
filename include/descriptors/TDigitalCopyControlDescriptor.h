#ifndef QUOR_TDIGITAL_COPY_CONTROL_DESCRIPTOR_H
#define QUOR_TDIGITAL_COPY_CONTROL_DESCRIPTOR_H

#include "descriptors/TDigitalCopyControlDescriptorItem.h"
#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

namespace Quor {

/// Digital copy control descriptor (ARIB STD-B10, tag 0xC1): how a service may be recorded and copied, with items for
/// its components.
class QUOR_ISDBT_API TDigitalCopyControlDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0xC1;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 1;

    /// @name Known values of getCopyControlType()
    /// @{
    static constexpr QUOR_U8 COPY_CONTROL_FREE = 0;
    static constexpr QUOR_U8 COPY_CONTROL_SD_FREE_ORIGINAL_ONCE = 1;
    static constexpr QUOR_U8 COPY_CONTROL_SD_FREE = 3;
    /// @}

    /// An empty descriptor over the caller's bytes, which are not copied.
    TDigitalCopyControlDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TDigitalCopyControlDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives the bytes of the body that are read: the fixed part and its items. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(), or
    ///                     ERROR_INVALID_DESCRIPTOR_LENGTH when an announced field is missing or an item is not valid.
    ///                     May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TDigitalCopyControlDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                QUOR_U16* errorCode);

    /// digital_recording_control_data, 0 to 3.
    QUOR_U8 getDigitalRecordingControlData() const { return m_iDigitalRecCtrlData; }

    /// maximum_bitrate_flag: whether getMaximumBitrate() comes from the wire.
    QUOR_BOOL hasMaximumBitrate() const { return m_bMaximumBitrate; }

    /// component_control_flag: whether the descriptor has a loop of items.
    QUOR_BOOL hasComponentControl() const { return m_bComponentControl; }

    /// copy_control_type, 0 to 3.
    QUOR_U8 getCopyControlType() const { return m_iCopyControlType; }

    /// APS_control_data, 0 to 3: the analogue protection; 0 as well when getCopyControlType() is 0.
    QUOR_U8 getAPSControlData() const { return m_iAPSControlData; }

    /// maximum_bit_rate in units of 0.25 Mbit/s; 0 unless hasMaximumBitrate().
    QUOR_U8 getMaximumBitrate() const { return m_iMaximumBitrate; }

    /// The number of items.
    QUOR_U32 size() const { return m_pItems.size(); }

    /// The item at a position, from 0 in wire order, owned by the descriptor; null past the end.
    TDigitalCopyControlDescriptorItem* get(QUOR_U32 index) const { return detail::at(m_pItems, index); }

    /// Appends an item, which the descriptor owns from now on. Null takes a place as well.
    void add(TDigitalCopyControlDescriptorItem* item);

    /// Removes and deletes the item at a position. @return false when no item is there.
    QUOR_BOOL remove(QUOR_U32 index);

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U8 m_iDigitalRecCtrlData = 0;
    QUOR_BOOL m_bMaximumBitrate = false;
    QUOR_BOOL m_bComponentControl = false;
    QUOR_U8 m_iCopyControlType = 0;
    QUOR_U8 m_iAPSControlData = 0;
    QUOR_U8 m_iMaximumBitrate = 0;
    detail::Items<TDigitalCopyControlDescriptorItem> m_pItems{};
};

} // namespace Quor

#endif
