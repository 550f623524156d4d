#ifndef QUOR_TSDT_TABLE_H
#define QUOR_TSDT_TABLE_H

#include "TISDBTVersionedTable.h"
#include "detail/Owned.h"
#include "sdt/TServiceDescription.h"

namespace Quor {

/// Service description table of the actual transport stream (ABNT NBR 15603, table_id 0x42, PID 0x0011): the services
/// with their names and properties.
class QUOR_ISDBT_API TSDTTable : public TISDBTVersionedTable {
public:
    static constexpr QUOR_U32 MINIMUM_DATA_LENGTH = 3;

    /// An empty table over a private copy of the section.
    TSDTTable(QUOR_U8* data, QUOR_U32 length);
    ~TSDTTable() override;

    /// Parses one section.
    /// @param data             the section, from table_id to CRC_32. getData() of the descriptors points into it.
    /// @param length           number of bytes; those behind the section are ignored.
    /// @param parseDescriptors ignored: descriptors are always parsed.
    /// @param checkCRC32       ignored.
    /// @param errorCode        ERROR_OK or the reason of a failure: those of the section header,
    ///                         ERROR_INVALID_DATA_LENGTH for a section without its fixed fields, or ERROR_INVALID_ITEM
    ///                         for a service that is not valid. May be null.
    /// @param previous         the table of an earlier version, or null; see TISDBTVersionedTable.
    /// @return a new table, which the caller deletes, or null.
    static TSDTTable* parse(QUOR_U8* data, QUOR_U32 length, int parseDescriptors, int checkCRC32, QUOR_U16* errorCode,
                            TSDTTable* previous);

    /// transport_stream_id of the stream whose services are described.
    QUOR_U16 getTransportStreamID() const { return getGenericDataField(); }

    /// original_network_id: the network that the stream comes from.
    QUOR_U16 getOriginalNetworkID() const { return m_iOriginalNetworkID; }

    /// The number of services.
    QUOR_U32 size() const { return m_pItems.size(); }

    /// The description of a service, owned by the table; null when there is none.
    TServiceDescription* getServiceDescription(QUOR_U16 serviceId) const;

    /// The service_ids in ascending order: a new list, which the caller deletes.
    std::list<QUOR_U16>* getServiceIDs() const;

    /// Adds a service, which the table owns from now on. One with the same service_id is displaced and not deleted.
    /// Null is ignored.
    void addServiceDescription(TServiceDescription* service);

    /// Removes and deletes the description of a service. @return whether there was one.
    bool removeServiceDescription(QUOR_U16 serviceId);

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& section, QUOR_U16 remaining);

    QUOR_U16 m_iOriginalNetworkID = 0;
    detail::Items<TServiceDescription> m_pItems{};
};

} // namespace Quor

#endif
