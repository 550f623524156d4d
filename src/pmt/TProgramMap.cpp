#include "pmt/TProgramMap.h"

#include "detail/Log.h"
#include "detail/Parse.h"
#include "pmt/TPMTFamily.h"
#include "pmt/TPMTTable.h"

namespace Quor {

namespace {

// stream_type (8) | reserved (3) elementary_PID (13) | reserved (4) ES_info_length (12) | descriptors
constexpr QUOR_U32 FIXED_LENGTH = 5;

struct Walk {
    detail::Bytes left;
    QUOR_U32 stated; ///< bytes left as the section counts them

    detail::Outcome take(QUOR_U32 bodyLength) {
        return detail::takeStated(*this, bodyLength, TISDBTDescriptor::COMMON_HEADER_LENGTH);
    }

    static detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
        QUOR_ISDBT_LOG("%s: TProgramMap::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG, needed,
                       left);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }

    static void unknown(QUOR_U8 tag) {
        QUOR_ISDBT_LOG("%s: TProgramMap::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG, unsigned{tag});
    }
};

} // namespace

TProgramMap::~TProgramMap() = default;

TProgramMap* TProgramMap::parse(QUOR_U8* data, QUOR_U32 length, int /*parseDescriptors*/, QUOR_U32* parsedLength,
                                QUOR_U16* errorCode) {
    return detail::parseEntry<TProgramMap>(data, length, parsedLength, errorCode);
}

detail::Outcome TProgramMap::decode(const detail::Bytes& entry, QUOR_U32 stated) {
    if (stated < FIXED_LENGTH) {
        QUOR_ISDBT_LOG("%s: TProgramMap::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG, stated);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    if (!entry.has(0, FIXED_LENGTH)) {
        return Walk::tooLong(FIXED_LENGTH, entry.size());
    }
    m_iStreamType = entry.u8(0);
    m_iElementaryPID = entry.pid(1);
    return detail::walkEntryLoop<Walk>(PMT_FAMILY, m_descriptors, entry, stated, FIXED_LENGTH, entry.length12(3));
}

void TProgramMap::setParentPMTTable(TPMTTable* parent) {
    m_pCommon = parent == nullptr ? nullptr : &parent->m_descriptors;
}

std::list<QUOR_U8>* TProgramMap::getDescriptorTags() const {
    return PMT_FAMILY.tags(m_descriptors);
}

} // namespace Quor
