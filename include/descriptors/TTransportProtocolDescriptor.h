#ifndef QUOR_TTRANSPORT_PROTOCOL_DESCRIPTOR_H
#define QUOR_TTRANSPORT_PROTOCOL_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"

namespace Quor {

/// Transport protocol descriptor (ABNT NBR 15606, tag 0x02, in the application information table): how the files of an
/// application arrive. The class is abstract; parse() makes the variant that protocol_id selects.
class QUOR_ISDBT_API TTransportProtocolDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x02;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 3;

    /// The variants; the values are those of protocol_id.
    enum Type : QUOR_U32 { ObjectCarousel = 1, IP = 2, DataPiping = 3, DataCarousel = 4 };

    ~TTransportProtocolDescriptor() override;

    /// Decodes what follows descriptor_length into this object.
    /// @param data         the bytes from protocol_id on.
    /// @param length       their number.
    /// @param parsedLength receives the bytes read, from protocol_id on. May be null.
    /// @param errorCode    ERROR_OK, ERROR_INVALID_DATA_LENGTH or ERROR_INVALID_STRING. May be null.
    /// @return whether the bytes were sound.
    virtual QUOR_BOOL parseData(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode) = 0;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2. getDataLength() returns two less.
    /// @param parsedLength receives the bytes read, from protocol_id on, without tag and length. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader() or of
    ///                     parseData(). It is ERROR_OK as well when null is returned for data piping or an unknown
    ///                     protocol_id. May be null.
    /// @return a new TTransportProtocolDescriptorOC, TTransportProtocolDescriptorIP or TTransportProtocolDescriptorDC,
    ///         which the caller deletes, or null.
    static TTransportProtocolDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                               QUOR_U16* errorCode);

    /// A deep copy of a descriptor of any variant, without data: a new object, which the caller deletes. Null for
    /// data piping and unknown types.
    /// @param source an object of the class that belongs to its type; null gives null.
    static TTransportProtocolDescriptor* clone(TTransportProtocolDescriptor* source);

    /// Which variant this is.
    Type getType() const { return m_eMyType; }

    /// protocol_id, 0 to 65535.
    QUOR_U16 getProtocolID() const { return m_iProtocolID; }

    /// transport_protocol_label, by which the other descriptors of an application refer to this one.
    QUOR_U8 getTransportProtocolLabel() const { return m_iTransportProtocolLabel; }

protected:
    /// The service whose multiplex carries the files. The identifiers are 0 unless it is another service's.
    struct Connection {
        QUOR_BOOL m_bRemoteConnection; ///< remote_connection
        QUOR_U16 m_iOriginalNetworkID; ///< original_network_id
        QUOR_U16 m_iTransportStreamID; ///< transport_stream_id
        QUOR_U16 m_iServiceID;         ///< service_id
    };

    /// A descriptor with label 0 over the caller's bytes, which are not copied.
    TTransportProtocolDescriptor(Type type, QUOR_U16 protocolId, QUOR_U8* data, QUOR_U32 length)
        : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_eMyType(type), m_iProtocolID(protocolId) {}

    /// Decodes the label and the connection, with which every variant begins.
    /// @param body       the bytes from protocol_id on.
    /// @param minimum    fewest bytes of a body without a remote connection.
    /// @param connection receives what was decoded.
    /// @param left       receives the number of bytes that turned out to be too few, when 0 is returned.
    /// @return where the variant's own bytes begin in the body; 0 when it is too short.
    QUOR_U32 decodeConnection(const detail::Bytes& body, QUOR_U32 minimum, Connection& connection, QUOR_U32& left);

private:
    friend struct detail::Access;

    static TISDBTDescriptor* parseVariant(const detail::Bytes& descriptor, detail::Outcome& outcome);

    Type m_eMyType;
    QUOR_U16 m_iProtocolID;
    QUOR_U8 m_iTransportProtocolLabel = 0;
};

} // namespace Quor

#endif
