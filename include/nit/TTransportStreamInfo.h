#ifndef QUOR_TTRANSPORT_STREAM_INFO_H
#define QUOR_TTRANSPORT_STREAM_INFO_H

#include "QuorDefs.h"
#include "QuorISDBTExport.h"
#include "nit/TNITDescriptors.h"

#include <list>

namespace Quor {

class TISDBTDescriptor;

namespace detail {
class Bytes;
class Outcome;
} // namespace detail

/// One transport stream of a network (ABNT NBR 15603) with its own descriptors.
class QUOR_ISDBT_API TTransportStreamInfo {
public:
    /// Both ids 0, no descriptors.
    TTransportStreamInfo();
    virtual ~TTransportStreamInfo();

    /// Parses one entry of the transport stream loop.
    /// @param data             the entry. getData() of the descriptors points into it.
    /// @param length           bytes left in the section.
    /// @param parseDescriptors ignored: descriptors are always parsed.
    /// @param parsedLength     receives the bytes that the entry took. May be null.
    /// @param err              ERROR_OK or the reason of a failure: ERROR_INVALID_DATA_LENGTH, or what a descriptor
    ///                         failed with. May be null.
    /// @return a new entry, which the caller deletes, or null.
    static TTransportStreamInfo* parse(QUOR_U8* data, QUOR_U32 length, int parseDescriptors, QUOR_U32* parsedLength,
                                       QUOR_U16* err);

    /// transport_stream_id, 0 to 65535.
    QUOR_U16 getTransportStreamID() const { return m_iTransportStreamID; }

    /// original_network_id: the network that the stream comes from.
    QUOR_U16 getOriginalNetworkID() const { return m_iOriginalNetworkID; }

    /// @name The descriptors of the transport stream, owned by the entry; null when absent.
    /// @{
    TNetworkNameDescriptor* getNetworkNameDescriptor() const;
    TSystemManagementDescriptor* getSystemManagementDescriptor() const;
    TServiceListDescriptor* getServiceListDescriptor() const;
    TLinkageDescriptor* getLinkageDescriptor() const;
    TTerrestrialDeliverySystemDescriptor* getTerrestrialDeliverySystemDescriptor() const;
    TEmergencyInformationDescriptor* getEmergencyInformationDescriptor() const;
    TPartialReceptionDescriptor* getPartialReceptionDescriptor() const;
    TTSInformationDescriptor* getTSInformationDescriptor() const;
    /// @}

    /// The descriptor for a tag, or null. The entry keeps ownership.
    TISDBTDescriptor* getDescriptor(QUOR_U8 tag) const;

    /// The tags of the descriptors held: a new list, which the caller deletes.
    std::list<QUOR_U8>* getDescriptorTags() const;

private:
    friend class TNITTable;

    /// @param stated the bytes left as the section counts them, which may be more than there are.
    static TTransportStreamInfo* parse(detail::Bytes left, QUOR_U32 stated, QUOR_U32* parsedLength, QUOR_U16* err);
    detail::Outcome parseBody(detail::Bytes left, QUOR_U32 stated, QUOR_U16* err);

    QUOR_U16 m_iTransportStreamID;
    QUOR_U16 m_iOriginalNetworkID;
    TNITDescriptors m_descriptors;
};

} // namespace Quor

#endif
