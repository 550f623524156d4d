#include "descriptors/TParentalRatingDescriptorItem.h"

#include "detail/Log.h"
#include "detail/Shapes.h"
#include "utils/ParserUtils.h"

namespace Quor {

namespace {

// country_code (24) | rating (8)
constexpr QUOR_U32 ITEM_LENGTH = 4;
constexpr QUOR_U32 COUNTRY_CODE_LENGTH = 3;

} // namespace

TParentalRatingDescriptorItem::TParentalRatingDescriptorItem() : m_iRating(0) {}

TParentalRatingDescriptorItem::~TParentalRatingDescriptorItem() = default;

TParentalRatingDescriptorItem* TParentalRatingDescriptorItem::parse(QUOR_U8* sectionData, QUOR_U32 dataLength,
                                                                    QUOR_U32* itemLength, QUOR_U16* errorCode) {
    return detail::parseItem<TParentalRatingDescriptorItem>(
        sectionData, dataLength, itemLength, errorCode, [](TParentalRatingDescriptorItem& item, detail::Bytes left) {
            if (left.size() < ITEM_LENGTH) {
                QUOR_ISDBT_LOG("%s: TParentalRatingDescriptorItem::parse: Descriptor length not valid: %u. Aborting!",
                               detail::LOG_TAG, left.size());
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
            }
            if (ParserUtils::parseStr(left.data(), item.m_sCountryCode, COUNTRY_CODE_LENGTH, left.size()) !=
                QUOR_S32{COUNTRY_CODE_LENGTH}) {
                QUOR_ISDBT_LOG("%s: TParentalRatingDescriptorItem:: parse: ERROR: parsing Language Code. Aborting!",
                               detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
            }
            item.m_iRating = left.u8(3);
            return detail::Outcome::done(ITEM_LENGTH);
        });
}

} // namespace Quor
