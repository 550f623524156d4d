#ifndef QUOR_TPARENTAL_RATING_DESCRIPTOR_ITEM_H
#define QUOR_TPARENTAL_RATING_DESCRIPTOR_ITEM_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"
#include "detail/Owned.h"

#include <string>

namespace Quor {

/// The parental rating in one country.
class QUOR_ISDBT_API TParentalRatingDescriptorItem : public TISDBTMemory {
public:
    TParentalRatingDescriptorItem() = default;
    virtual ~TParentalRatingDescriptorItem();

    /// Parses one item of four bytes.
    /// @param data         the item.
    /// @param length       bytes left in the descriptor.
    /// @param parsedLength receives the bytes that the item took, 4. May be null.
    /// @param errorCode    ERROR_OK, ERROR_INVALID_DATA_LENGTH, or ERROR_INVALID_STRING for a country code that does
    ///                     not fit. May be null.
    /// @return a new item, which the caller deletes, or null.
    static TParentalRatingDescriptorItem* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                QUOR_U16* errorCode);

    /// country_code, three letters of ISO 3166-1.
    std::string getCountryCode() const { return m_sCountryCode; }

    /// rating, 0 to 255; its meaning depends on the country.
    QUOR_U8 getRating() const { return m_iRating; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& left);

    detail::Text m_sCountryCode{};
    QUOR_U8 m_iRating = 0;
};

} // namespace Quor

#endif
