#include "descriptors/TParentalRatingDescriptorItem.h"

#include "detail/Log.h"
#include "detail/Parse.h"
#include "detail/Strings.h"

namespace Quor {

namespace {

// country_code (24) | rating (8)
constexpr QUOR_U32 ITEM_LENGTH = 4;
constexpr QUOR_U32 COUNTRY_CODE_LENGTH = 3;

} // namespace

TParentalRatingDescriptorItem::~TParentalRatingDescriptorItem() = default;

TParentalRatingDescriptorItem* TParentalRatingDescriptorItem::parse(QUOR_U8* data, QUOR_U32 length,
                                                                    QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseItem<TParentalRatingDescriptorItem>(data, length, parsedLength, errorCode);
}

detail::Outcome TParentalRatingDescriptorItem::decode(const detail::Bytes& left) {
    if (left.size() < ITEM_LENGTH) {
        QUOR_ISDBT_LOG("%s: TParentalRatingDescriptorItem::parse: Descriptor length not valid: %u. Aborting!",
                       detail::LOG_TAG, left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    if (detail::readText(left, COUNTRY_CODE_LENGTH, m_sCountryCode) != QUOR_S32{COUNTRY_CODE_LENGTH}) {
        QUOR_ISDBT_LOG("%s: TParentalRatingDescriptorItem:: parse: ERROR: parsing Language Code. Aborting!",
                       detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    m_iRating = left.u8(3);
    return detail::Outcome::done(ITEM_LENGTH);
}

} // namespace Quor
