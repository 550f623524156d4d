#ifndef QUOR_TGENERAL_EVENT_DESCRIPTOR_H
#define QUOR_TGENERAL_EVENT_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

namespace Quor {

/// General event descriptor (tag 0x04): an event message for applications, with the time when it takes effect. No table
/// of the library parses it, because it shares its tag with the stream event descriptor; callers parse it themselves.
///
/// Mind that in time modes 1 and 5 everything behind the time is taken five bytes further on than in the other modes.
class QUOR_ISDBT_API TGeneralEventDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x04;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 16;

    /// @name Known values of getTimeMode()
    /// @{
    static constexpr QUOR_U8 TIME_MODE_NONE = 0;           ///< at once, without a time
    static constexpr QUOR_U8 TIME_MODE_MJD_UTC = 1;        ///< date and time of day
    static constexpr QUOR_U8 TIME_MODE_NPT = 2;            ///< normal play time
    static constexpr QUOR_U8 TIME_MODE_EVENT_RELATIVE = 3; ///< relative to the start of the programme
    static constexpr QUOR_U8 TIME_MODE_MJD_UTC_2 = 5;      ///< date and time of day
    /// @}

    /// An empty descriptor over the caller's bytes, which are not copied.
    TGeneralEventDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TGeneralEventDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives length - 2. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TGeneralEventDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// event_msg_group_id, whose two parts overlap: the first byte of the body times 16, or-ed with the upper four bits
    /// of the second.
    QUOR_U16 getEventMsgGroupID() const { return m_iEventMsgGroupID; }

    /// time_mode, 0 to 255: which of the times below the descriptor has. Modes without a constant have none.
    QUOR_U8 getTimeMode() const { return m_iTimeMode; }

    /// The time of modes 1 and 5 in seconds since 1970-01-01 00:00:00, in the time zone of the wire; else 0.
    QUOR_U32 getEventMsgJSTTime() const { return m_iEventMsgJSTTime; }

    /// Bit 32 of the normal play time of mode 2, 0 or 1; else 0.
    QUOR_U8 getEventMsgNPTH() const { return m_iEventMsgNPTH; }

    /// The low 32 bits of the normal play time of mode 2, in units of 1/90000 s; else 0.
    QUOR_U32 getEventMsgNPTL() const { return m_iEventMsgNPTL; }

    /// Bits 35 to 32 of the relative time of mode 3, 0 to 15, as received: the first of the nine BCD digits HHMMSSmmm
    /// that count from the start of the programme; else 0.
    QUOR_U8 getEventMsgRelativeTimeH() const { return m_iEventMsgRelativeTimeH; }

    /// The low 32 bits of the relative time of mode 3, as received: the other eight of its BCD digits; else 0.
    QUOR_U32 getEventMsgRelativeTimeL() const { return m_iEventMsgRelativeTimeL; }

    /// event_msg_type, 0 to 255.
    QUOR_U8 getEventMsgType() const { return m_iEventMsgType; }

    /// event_msg_id, 0 to 65535.
    QUOR_U16 getEventMsgID() const { return m_iEventMsgID; }

    /// The number of bytes of getPrivateData(), kept in 8 bits.
    QUOR_U8 getPrivateDataSize() const { return m_iPrivateDataSize; }

    /// private_data_byte, owned by the descriptor; null when there is none.
    QUOR_U8* getPrivateData() const { return m_pPrivateData.get(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U16 m_iEventMsgGroupID = 0;
    QUOR_U8 m_iTimeMode = 0;
    QUOR_U32 m_iEventMsgJSTTime = 0;
    QUOR_U8 m_iEventMsgNPTH = 0;
    QUOR_U32 m_iEventMsgNPTL = 0;
    QUOR_U8 m_iEventMsgRelativeTimeH = 0;
    QUOR_U32 m_iEventMsgRelativeTimeL = 0;
    QUOR_U8 m_iEventMsgType = 0;
    QUOR_U16 m_iEventMsgID = 0;
    QUOR_U8 m_iPrivateDataSize = 0;
    detail::Array<QUOR_U8> m_pPrivateData{};
};

} // namespace Quor

#endif
