#include "descriptors/TCompatibilityDescriptorSubItem.h"

#include "detail/Arrays.h"
#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// subDescriptorType (8) | subDescriptorLength (8) | additionalInformation
constexpr QUOR_U32 FIXED_LENGTH = 2;
constexpr QUOR_U32 INFORMATION_LENGTH_AT = 1;

} // namespace

TCompatibilityDescriptorSubItem::~TCompatibilityDescriptorSubItem() = default;

TCompatibilityDescriptorSubItem* TCompatibilityDescriptorSubItem::parse(QUOR_U8* data, QUOR_U32 length,
                                                                        QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseItem<TCompatibilityDescriptorSubItem>(data, length, parsedLength, errorCode);
}

detail::Outcome TCompatibilityDescriptorSubItem::decode(const detail::Bytes& left) {
    if (left.size() < FIXED_LENGTH) {
        QUOR_ISDBT_LOG("%s: TCompatibilityDescriptorSubItem::parse: Item length not valid: %u. Aborting!",
                       detail::LOG_TAG, left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    m_iSubDescriptorType = left.u8(0);
    if (!detail::readByteArray(left.from(INFORMATION_LENGTH_AT), m_iAdditionalInformationLength,
                               m_iAdditionalInformation)) {
        QUOR_ISDBT_LOG("%s: TCompatibilityDescriptorSubItem:: parse: ERROR: parsing Additional Information. Aborting!",
                       detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    return detail::Outcome::done(FIXED_LENGTH + m_iAdditionalInformationLength);
}

} // namespace Quor
