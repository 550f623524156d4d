#include "descriptors/TAACDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Family.h"
#include "detail/Log.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) | profile_and_level (8) | AAC_type_flag (1) reserved (7) |
// if AAC_type_flag: AAC_type (8) |
// additional_info (8) ...
constexpr QUOR_U32 AAC_TYPE_LENGTH = 1;

} // namespace

TAACDescriptor::~TAACDescriptor() = default;

TAACDescriptor* TAACDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TAACDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TAACDescriptor::decode(const detail::Bytes& descriptor) {
    m_iProfileAndLevel = descriptor.u8(2);
    m_bAACTypeFlag = descriptor.bit(3, 7);
    detail::Bytes left = descriptor.from(4);
    if (m_bAACTypeFlag) {
        if (left.empty()) {
            QUOR_ISDBT_LOG("%s: TAACDescriptor::parse: Longer data length is required: %u < %u. Aborting!",
                           detail::LOG_TAG, left.size(), AAC_TYPE_LENGTH);
            return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
        }
        m_iAACType = left.u8(0);
        left = left.from(AAC_TYPE_LENGTH);
    }
    m_pAdditionalInfo = detail::copyBytes(left, m_iAdditionalInfoSize);
    return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
}

} // namespace Quor
