#include "descriptors/TTSInformationDescriptorItem.h"

#include "detail/Arrays.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

namespace {

// transmission_type_info (8) | num_of_service (8) | service_id (16) ...
constexpr QUOR_U32 FIXED_LENGTH = 2;

/// Asked for also of an item without services; callers depend on this value.
constexpr QUOR_U32 MINIMUM_LENGTH = 4;

} // namespace

constexpr QUOR_U8 TTSInformationDescriptorItem::TRANSMISSION_PARAMETER_TYPE_A;
constexpr QUOR_U8 TTSInformationDescriptorItem::TRANSMISSION_PARAMETER_TYPE_B;
constexpr QUOR_U8 TTSInformationDescriptorItem::TRANSMISSION_PARAMETER_TYPE_C;
constexpr QUOR_U8 TTSInformationDescriptorItem::MODULATION_SYSTEM_64QAM;
constexpr QUOR_U8 TTSInformationDescriptorItem::MODULATION_SYSTEM_16QAM;
constexpr QUOR_U8 TTSInformationDescriptorItem::MODULATION_SYSTEM_QPSK;

TTSInformationDescriptorItem::TTSInformationDescriptorItem() : m_iTransmissionTypeInfo(0), m_iNumberOfServices(0) {}

TTSInformationDescriptorItem::~TTSInformationDescriptorItem() = default;

TTSInformationDescriptorItem* TTSInformationDescriptorItem::parse(QUOR_U8* data, QUOR_U32 length,
                                                                  QUOR_U32* parsedLength, QUOR_U16* err) {
    return detail::parseItem<TTSInformationDescriptorItem>(
        data, length, parsedLength, err, [](TTSInformationDescriptorItem& item, detail::Bytes left) {
            const QUOR_U32 servicesLength = 2U * left.u8(1);
            if (left.size() < MINIMUM_LENGTH || left.size() < FIXED_LENGTH + servicesLength) {
                QUOR_ISDBT_LOG("%s: TTSInformationDescriptorItem::parse: Item length not valid: %u. Aborting!",
                               detail::LOG_TAG, left.size());
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
            }
            item.m_iTransmissionTypeInfo = left.u8(0);
            item.m_iNumberOfServices = left.u8(1);
            item.m_pServices = detail::copyWords(left.from(FIXED_LENGTH).first(servicesLength));
            return detail::Outcome::done(FIXED_LENGTH + servicesLength);
        });
}

QUOR_U8 TTSInformationDescriptorItem::getTransmissionParameterType() const {
    return m_iTransmissionTypeInfo >> 6;
}

QUOR_U8 TTSInformationDescriptorItem::getModulationSystem() const {
    return m_iTransmissionTypeInfo >> 4 & 3U;
}

} // namespace Quor
