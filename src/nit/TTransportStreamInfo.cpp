#include "nit/TTransportStreamInfo.h"

#include "detail/Log.h"
#include "detail/Parse.h"
#include "nit/TNITFamily.h"

namespace Quor {

namespace {

// transport_stream_id (16) | original_network_id (16) | reserved (4) transport_descriptors_length (12) | descriptors
constexpr QUOR_U32 FIXED_LENGTH = 6;

// Quirk: the lines name the class differently.
struct Walk {
    detail::Bytes left;
    QUOR_U32 stated; ///< bytes left as the section counts them

    detail::Outcome take(QUOR_U32 bodyLength) { return detail::takeStated(*this, bodyLength, 0); }

    static detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
        QUOR_ISDBT_LOG("%s: TNITTransportStreamInfo::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG,
                       needed, left);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }

    static void unknown(QUOR_U8 tag) {
        if (tag != detail::STUFFING_TAG) {
            QUOR_ISDBT_LOG("%s: TNITTransportStreamInfo::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG,
                           unsigned{tag});
        }
    }
};

} // namespace

TTransportStreamInfo::~TTransportStreamInfo() = default;

TTransportStreamInfo* TTransportStreamInfo::parse(QUOR_U8* data, QUOR_U32 length, int /*parseDescriptors*/,
                                                  QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseEntry<TTransportStreamInfo>(data, length, parsedLength, errorCode);
}

detail::Outcome TTransportStreamInfo::decode(const detail::Bytes& entry, QUOR_U32 stated) {
    if (stated < FIXED_LENGTH) {
        QUOR_ISDBT_LOG("%s: TNITTransportStreamInfo::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG,
                       stated);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    if (!entry.has(0, FIXED_LENGTH)) {
        return Walk::tooLong(FIXED_LENGTH, entry.size());
    }
    m_iTransportStreamID = entry.u16(0);
    m_iOriginalNetworkID = entry.u16(2);
    return detail::walkEntryLoop<Walk>(NIT_FAMILY, m_descriptors, entry, stated, FIXED_LENGTH, entry.length12(4));
}

std::list<QUOR_U8>* TTransportStreamInfo::getDescriptorTags() const {
    return NIT_FAMILY.tags(m_descriptors);
}

} // namespace Quor
