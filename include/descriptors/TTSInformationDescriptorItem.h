#ifndef QUOR_TTS_INFORMATION_DESCRIPTOR_ITEM_H
#define QUOR_TTS_INFORMATION_DESCRIPTOR_ITEM_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"
#include "detail/Owned.h"

namespace Quor {

/// One transmission type of a transport stream: how its hierarchical layer is transmitted, and the services in it.
class QUOR_ISDBT_API TTSInformationDescriptorItem : public TISDBTMemory {
public:
    /// @name Values of getTransmissionParameterType()
    /// @{
    static constexpr QUOR_U8 TRANSMISSION_PARAMETER_TYPE_A = 0;
    static constexpr QUOR_U8 TRANSMISSION_PARAMETER_TYPE_B = 1;
    static constexpr QUOR_U8 TRANSMISSION_PARAMETER_TYPE_C = 2;
    /// @}

    /// @name Values of getModulationSystem()
    /// @{
    static constexpr QUOR_U8 MODULATION_SYSTEM_64QAM = 0;
    static constexpr QUOR_U8 MODULATION_SYSTEM_16QAM = 1;
    static constexpr QUOR_U8 MODULATION_SYSTEM_QPSK = 2;
    /// @}

    TTSInformationDescriptorItem() = default;
    virtual ~TTSInformationDescriptorItem();

    /// Parses one item.
    /// @param data         the item.
    /// @param length       bytes left in the descriptor. At least 4 are needed, also by an item without services, which
    ///                     takes only 2.
    /// @param parsedLength receives the bytes that the item took: 2 and 2 for each service. May be null.
    /// @param errorCode    ERROR_OK or ERROR_INVALID_DATA_LENGTH. May be null.
    /// @return a new item, which the caller deletes, or null.
    static TTSInformationDescriptorItem* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                               QUOR_U16* errorCode);

    /// transmission_type_info, all eight bits.
    QUOR_U8 getTransmissionTypeInfo() const { return m_iTransmissionTypeInfo; }

    /// The two upper bits of transmission_type_info, 0 to 3.
    QUOR_U8 getTransmissionParameterType() const { return m_iTransmissionTypeInfo >> 6; }

    /// The two bits below them, 0 to 3: the modulation of the layer.
    QUOR_U8 getModulationSystem() const { return m_iTransmissionTypeInfo >> 4 & 3U; }

    /// num_of_service, 0 to 255.
    QUOR_U8 getNumberOfServices() const { return m_iNumberOfServices; }

    /// The service_ids in wire order, owned by the item; null when there are none.
    QUOR_U16* getServices() const { return m_pServices.get(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& left);

    QUOR_U8 m_iTransmissionTypeInfo = 0;
    QUOR_U8 m_iNumberOfServices = 0;
    detail::Array<QUOR_U16> m_pServices{};
};

} // namespace Quor

#endif
