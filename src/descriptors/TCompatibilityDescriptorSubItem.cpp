#include "descriptors/TCompatibilityDescriptorSubItem.h"

#include "detail/Arrays.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

namespace {

// subDescriptorType (8) | subDescriptorLength (8) | additionalInformation
constexpr QUOR_U32 FIXED_LENGTH = 2;
constexpr QUOR_U32 INFORMATION_LENGTH_AT = 1;

} // namespace

TCompatibilityDescriptorSubItem::TCompatibilityDescriptorSubItem()
    : m_iSubDescriptorType(0), m_iAdditionalInformationLength(0) {}

TCompatibilityDescriptorSubItem::~TCompatibilityDescriptorSubItem() = default;

TCompatibilityDescriptorSubItem* TCompatibilityDescriptorSubItem::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                                        QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseItem<TCompatibilityDescriptorSubItem>(
        sectionData, dataLength, parsedLength, errorCode,
        [](TCompatibilityDescriptorSubItem& item, detail::Bytes left) {
            if (left.size() < FIXED_LENGTH) {
                QUOR_ISDBT_LOG("%s: TCompatibilityDescriptorSubItem::parse: Item length not valid: %u. Aborting!",
                               detail::LOG_TAG, left.size());
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
            }
            item.m_iSubDescriptorType = left.u8(0);
            if (!detail::readByteArray(left.from(INFORMATION_LENGTH_AT), item.m_iAdditionalInformationLength,
                                       item.m_iAdditionalInformation)) {
                QUOR_ISDBT_LOG(
                    "%s: TCompatibilityDescriptorSubItem:: parse: ERROR: parsing Additional Information. Aborting!",
                    detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
            }
            return detail::Outcome::done(FIXED_LENGTH + item.m_iAdditionalInformationLength);
        });
}

} // namespace Quor
