#include "descriptors/TTSInformationDescriptorItem.h"

#include "detail/Arrays.h"
#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// transmission_type_info (8) | num_of_service (8) | service_id (16) ...
constexpr QUOR_U32 FIXED_LENGTH = 2;

/// Quirk: asked for also of an item without services, which takes two.
constexpr QUOR_U32 MINIMUM_LENGTH = 4;

} // namespace

TTSInformationDescriptorItem::~TTSInformationDescriptorItem() = default;

TTSInformationDescriptorItem* TTSInformationDescriptorItem::parse(QUOR_U8* data, QUOR_U32 length,
                                                                  QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseItem<TTSInformationDescriptorItem>(data, length, parsedLength, errorCode);
}

detail::Outcome TTSInformationDescriptorItem::decode(const detail::Bytes& left) {
    const QUOR_U32 servicesLength = 2U * left.u8(1);
    if (left.size() < MINIMUM_LENGTH || left.size() < FIXED_LENGTH + servicesLength) {
        QUOR_ISDBT_LOG("%s: TTSInformationDescriptorItem::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG,
                       left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    m_iTransmissionTypeInfo = left.u8(0);
    m_iNumberOfServices = left.u8(1);
    m_pServices = detail::copyWords(left.from(FIXED_LENGTH).first(servicesLength));
    return detail::Outcome::done(FIXED_LENGTH + servicesLength);
}

} // namespace Quor
