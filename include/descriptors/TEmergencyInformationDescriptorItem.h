#ifndef QUOR_TEMERGENCY_INFORMATION_DESCRIPTOR_ITEM_H
#define QUOR_TEMERGENCY_INFORMATION_DESCRIPTOR_ITEM_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"
#include "detail/Owned.h"

namespace Quor {

/// The emergency signal of one service, and the areas that it concerns.
class QUOR_ISDBT_API TEmergencyInformationDescriptorItem : public TISDBTMemory {
public:
    TEmergencyInformationDescriptorItem() = default;
    virtual ~TEmergencyInformationDescriptorItem();

    /// Parses one item.
    /// @param data         the item.
    /// @param length       bytes left in the descriptor. At least 6 are needed, also by an item without area codes,
    ///                     which takes only 4.
    /// @param parsedLength receives the bytes that the item took: 4 and 2 for each area code. May be null.
    /// @param errorCode    ERROR_OK or ERROR_INVALID_DATA_LENGTH. May be null.
    /// @return a new item, which the caller deletes, or null.
    static TEmergencyInformationDescriptorItem* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                      QUOR_U16* errorCode);

    /// service_id of the service that carries the emergency broadcast.
    QUOR_U16 getServiceID() const { return m_iServiceID; }

    /// start_end_flag: whether the signal starts or is on the air, rather than ends.
    QUOR_BOOL isStart() const { return m_bStart; }

    /// signal_level, 0 or 1: the kind of the start signal.
    QUOR_U8 getSignalLevel() const { return m_iSignalLevel; }

    /// area_code_length: the number of bytes of the area codes, twice the number of codes.
    QUOR_U8 getAreaCodeCounter() const { return m_iAreaCodeLength; }

    /// The area codes of 12 bits, getAreaCodeCounter() / 2 of them, owned by the item; null when there are none.
    QUOR_U16* getAreaCodes() const { return m_pAreaCodes.get(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& left);

    QUOR_U16 m_iServiceID = 0;
    QUOR_BOOL m_bStart = false;
    QUOR_U8 m_iSignalLevel = 0;
    QUOR_U8 m_iAreaCodeLength = 0;
    detail::Array<QUOR_U16> m_pAreaCodes{};
};

} // namespace Quor

#endif
