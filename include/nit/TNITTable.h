#ifndef QUOR_TNIT_TABLE_H
#define QUOR_TNIT_TABLE_H

#include "TISDBTVersionedTable.h"
#include "descriptors/TEmergencyInformationDescriptor.h"
#include "descriptors/TLinkageDescriptor.h"
#include "descriptors/TNetworkNameDescriptor.h"
#include "descriptors/TPartialReceptionDescriptor.h"
#include "descriptors/TServiceListDescriptor.h"
#include "descriptors/TSystemManagementDescriptor.h"
#include "descriptors/TTSInformationDescriptor.h"
#include "descriptors/TTerrestrialDeliverySystemDescriptor.h"
#include "detail/Descriptors.h"
#include "detail/Owned.h"
#include "nit/TTransportStreamInfo.h"

namespace Quor {

/// Network information table of the actual network (ABNT NBR 15603, table_id 0x40, PID 0x0010): the network's
/// descriptors, and its transport streams with theirs.
class QUOR_ISDBT_API TNITTable : public TISDBTVersionedTable {
public:
    static constexpr QUOR_U32 MINIMUM_DATA_LENGTH = 4;

    /// An empty table over a private copy of the section.
    TNITTable(QUOR_U8* data, QUOR_U32 length);
    ~TNITTable() override;

    /// Parses one section.
    /// @param data             the section, from table_id to CRC_32. getData() of the descriptors points into it.
    /// @param length           number of bytes; those behind the section are ignored.
    /// @param checkCRC32       ignored.
    /// @param parseDescriptors ignored: descriptors are always parsed.
    /// @param errorCode        ERROR_OK or the reason of a failure: those of the section header,
    ///                         ERROR_INVALID_DATA_LENGTH for a loop or descriptor that does not fit, what a descriptor
    ///                         of the network failed with, or ERROR_INVALID_ITEM for a transport stream that is not
    ///                         valid. May be null.
    /// @param previous         the table of an earlier version, or null; see TISDBTVersionedTable.
    /// @return a new table, which the caller deletes, or null.
    static TNITTable* parse(QUOR_U8* data, QUOR_U32 length, int checkCRC32, int parseDescriptors, QUOR_U16* errorCode,
                            TNITTable* previous);

    /// network_id, 0 to 65535.
    QUOR_U16 getNetworkID() const { return getGenericDataField(); }

    /// @name The descriptors of the network, owned by the table; null when absent.
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

    TISDBTDescriptor* getDescriptor(QUOR_U8 tag) const override { return m_descriptors.find(tag); }
    std::list<QUOR_U8>* getDescriptorTags() const override;

    /// The number of transport streams (not the bytes of their loop).
    QUOR_U32 getTransportStreamLoopSize() const { return m_pItems.size(); }

    /// The transport_stream_ids in ascending order: a new list, which the caller deletes.
    std::list<QUOR_U16>* getTransportStreamIDs() const;

    /// The entry of a transport stream, owned by the table; null when there is none.
    TTransportStreamInfo* getTransportStreamInfo(QUOR_U16 id) const;

    /// Adds a transport stream, which the table owns from now on. An entry with the same transport_stream_id is
    /// displaced and not deleted. Null is ignored.
    void addTransportStreamInfo(TTransportStreamInfo* info);

    /// Removes and deletes the entry of a transport stream. @return whether there was one.
    bool removeTransportStreamInfo(QUOR_U16 id);

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& section, QUOR_U16 remaining);

    detail::Items<TTransportStreamInfo> m_pItems{};
    detail::Descriptors m_descriptors{};
};

} // namespace Quor

#endif
