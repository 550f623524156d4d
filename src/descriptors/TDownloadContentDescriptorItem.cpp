#include "descriptors/TDownloadContentDescriptorItem.h"

#include "detail/Arrays.h"
#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// module_id (16) | module_size (32) | module_info_length (8) | module_info
constexpr QUOR_U32 FIXED_LENGTH = 7;
constexpr QUOR_U32 INFO_LENGTH_AT = 6;

} // namespace

TDownloadContentDescriptorItem::~TDownloadContentDescriptorItem() = default;

TDownloadContentDescriptorItem* TDownloadContentDescriptorItem::parse(QUOR_U8* data, QUOR_U32 length,
                                                                      QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseItem<TDownloadContentDescriptorItem>(data, length, parsedLength, errorCode);
}

detail::Outcome TDownloadContentDescriptorItem::decode(const detail::Bytes& left) {
    if (left.size() < FIXED_LENGTH) {
        QUOR_ISDBT_LOG("%s: TDownloadContentDescriptorItem::parse: Item length not valid: %u. Aborting!",
                       detail::LOG_TAG, left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    // Quirk: the low byte first, unlike on the wire.
    m_iModuleID = static_cast<QUOR_U16>(left.u8(1) << 8 | left.u8(0));
    m_iModuleSize = left.u32(2);
    if (!detail::readByteArray(left.from(INFO_LENGTH_AT), m_iModuleInfoLength, m_iModuleInfo)) {
        QUOR_ISDBT_LOG("%s: TDownloadContentDescriptorItem:: parse: ERROR: parsing Mondule Info. Aborting!",
                       detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    return detail::Outcome::done(FIXED_LENGTH + m_iModuleInfoLength);
}

} // namespace Quor
