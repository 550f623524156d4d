#ifndef QUOR_TTRANSPORT_STREAM_INFO_H
#define QUOR_TTRANSPORT_STREAM_INFO_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"
#include "descriptors/TEmergencyInformationDescriptor.h"
#include "descriptors/TLinkageDescriptor.h"
#include "descriptors/TNetworkNameDescriptor.h"
#include "descriptors/TPartialReceptionDescriptor.h"
#include "descriptors/TServiceListDescriptor.h"
#include "descriptors/TSystemManagementDescriptor.h"
#include "descriptors/TTSInformationDescriptor.h"
#include "descriptors/TTerrestrialDeliverySystemDescriptor.h"
#include "detail/Descriptors.h"

#include <list>

namespace Quor {

/// One transport stream of a network (ABNT NBR 15603) with its own descriptors.
class QUOR_ISDBT_API TTransportStreamInfo : public TISDBTMemory {
public:
    /// Both ids 0, no descriptors.
    TTransportStreamInfo() = default;
    virtual ~TTransportStreamInfo();

    /// Parses one entry of the transport stream loop.
    /// @param data             the entry. getData() of the descriptors points into it.
    /// @param length           bytes left in the section.
    /// @param parseDescriptors ignored: descriptors are always parsed.
    /// @param parsedLength     receives the bytes that the entry took. May be null.
    /// @param errorCode        ERROR_OK or the reason of a failure: ERROR_INVALID_DATA_LENGTH, or what a descriptor
    ///                         failed with. May be null.
    /// @return a new entry, which the caller deletes, or null.
    static TTransportStreamInfo* parse(QUOR_U8* data, QUOR_U32 length, int parseDescriptors, QUOR_U32* parsedLength,
                                       QUOR_U16* errorCode);

    /// transport_stream_id, 0 to 65535.
    QUOR_U16 getTransportStreamID() const { return m_iTransportStreamID; }

    /// original_network_id: the network that the stream comes from.
    QUOR_U16 getOriginalNetworkID() const { return m_iOriginalNetworkID; }

    /// @name The descriptors of the transport stream, owned by the entry; null when absent.
    /// @{
    TNetworkNameDescriptor* getNetworkNameDescriptor() const { return m_descriptors.get<TNetworkNameDescriptor>(); }
    TSystemManagementDescriptor* getSystemManagementDescriptor() const {
        return m_descriptors.get<TSystemManagementDescriptor>();
    }
    TServiceListDescriptor* getServiceListDescriptor() const { return m_descriptors.get<TServiceListDescriptor>(); }
    TLinkageDescriptor* getLinkageDescriptor() const { return m_descriptors.get<TLinkageDescriptor>(); }
    TTerrestrialDeliverySystemDescriptor* getTerrestrialDeliverySystemDescriptor() const {
        return m_descriptors.get<TTerrestrialDeliverySystemDescriptor>();
    }
    TEmergencyInformationDescriptor* getEmergencyInformationDescriptor() const {
        return m_descriptors.get<TEmergencyInformationDescriptor>();
    }
    TPartialReceptionDescriptor* getPartialReceptionDescriptor() const {
        return m_descriptors.get<TPartialReceptionDescriptor>();
    }
    TTSInformationDescriptor* getTSInformationDescriptor() const {
        return m_descriptors.get<TTSInformationDescriptor>();
    }
    /// @}

    /// The descriptor for a tag, or null. The entry keeps ownership.
    TISDBTDescriptor* getDescriptor(QUOR_U8 tag) const { return m_descriptors.find(tag); }

    /// The tags of the descriptors held: a new list, which the caller deletes.
    std::list<QUOR_U8>* getDescriptorTags() const;

private:
    friend struct detail::Access;

    /// @param stated the bytes left as the section counts them, which may be more than there are.
    detail::Outcome decode(const detail::Bytes& entry, QUOR_U32 stated);

    QUOR_U16 m_iTransportStreamID = 0;
    QUOR_U16 m_iOriginalNetworkID = 0;
    detail::Descriptors m_descriptors{};
};

} // namespace Quor

#endif
