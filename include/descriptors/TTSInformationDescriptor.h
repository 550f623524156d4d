#ifndef QUOR_TTS_INFORMATION_DESCRIPTOR_H
#define QUOR_TTS_INFORMATION_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "descriptors/TTSInformationDescriptorItem.h"
#include "detail/Owned.h"

#include <string>

namespace Quor {

/// TS information descriptor (ARIB STD-B10, tag 0xCD, in the network information table): the name of a transport
/// stream, its key on the remote control, and its services by transmission type.
class QUOR_ISDBT_API TTSInformationDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0xCD;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 8;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TTSInformationDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TTSInformationDescriptor() override;

    /// Parses one descriptor. Bytes behind its last item are ignored.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives twice the bytes of the name plus the bytes of the items; the two bytes before the
    ///                     name do not count. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(),
    ///                     ERROR_INVALID_STRING for a name that does not fit or is empty, or
    ///                     ERROR_INVALID_DESCRIPTOR_LENGTH for an incomplete item. May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TTSInformationDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// remote_control_key_id, 0 to 255.
    QUOR_U8 getRemoteControlKeyID() const { return m_iRCKeyID; }

    /// The name as it is on the wire, in the character coding of the broadcast.
    std::string getTransportStreamName() const { return m_sTSName; }

    /// The number of transmission types; 0 to 3 after parse().
    QUOR_U32 getTransmissionTypeCount() const { return m_pItems.size(); }

    /// The transmission type at a position, from 0 in wire order, owned by the descriptor; null past the end.
    TTSInformationDescriptorItem* getTransmissionType(QUOR_U8 index) const { return detail::at(m_pItems, index); }

    /// Appends a transmission type, which the descriptor owns from now on. Null takes a place as well.
    void addTransmissionType(TTSInformationDescriptorItem* item);

    /// Removes and deletes the transmission type at a position. @return false when none is there.
    QUOR_BOOL removeTransmissionType(QUOR_U8 index);

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U8 m_iRCKeyID = 0;
    detail::Text m_sTSName{};
    detail::Items<TTSInformationDescriptorItem> m_pItems{};
};

} // namespace Quor

#endif
