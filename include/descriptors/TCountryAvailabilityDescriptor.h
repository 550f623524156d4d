#ifndef QUOR_TCOUNTRY_AVAILABILITY_DESCRIPTOR_H
#define QUOR_TCOUNTRY_AVAILABILITY_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

namespace Quor {

/// Country availability descriptor (ARIB STD-B10, tag 0x49): the countries in which a service is, or is not, meant to
/// be received.
class QUOR_ISDBT_API TCountryAvailabilityDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x49;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 4;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TCountryAvailabilityDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TCountryAvailabilityDescriptor() override;

    /// Parses one descriptor. One or two bytes behind the last country are ignored.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives 0. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TCountryAvailabilityDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                 QUOR_U16* errorCode);

    /// country_availability_flag: 1 when the service is for the countries of the list, 0 when it is not.
    QUOR_U8 getCountryAvailabilityFlag() const { return m_iCountryAvailabilityFlag; }

    /// The number of countries.
    QUOR_U32 size() const { return m_pItems.size(); }

    /// The country_code at a position, from 0 in wire order: three letters of ISO 3166-1, the first in bits 23 to 16;
    /// 0 past the end.
    QUOR_U32 get(QUOR_U32 index) const;

    /// Appends a country_code.
    void add(QUOR_U32 code);

    /// Removes the country_code at a position. @return false past the end.
    QUOR_BOOL remove(QUOR_U32 index);

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U8 m_iCountryAvailabilityFlag = 0;
    detail::Row<QUOR_U32> m_pItems{};
};

} // namespace Quor

#endif
