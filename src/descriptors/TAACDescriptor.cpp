#include "descriptors/TAACDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) | profile_and_level (8) | AAC_type_flag (1) reserved (7) |
// if AAC_type_flag: AAC_type (8) |
// additional_info (8) ...
constexpr QUOR_U32 AAC_TYPE_LENGTH = 1;

} // namespace

constexpr U8 TAACDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TAACDescriptor::MINIMUM_DESCRIPTOR_LENGTH;
constexpr QUOR_U8 TAACDescriptor::PROFILE_ACC_L1;
constexpr QUOR_U8 TAACDescriptor::PROFILE_ACC_L2;
constexpr QUOR_U8 TAACDescriptor::PROFILE_ACC_L4;
constexpr QUOR_U8 TAACDescriptor::PROFILE_ACC_L5;
constexpr QUOR_U8 TAACDescriptor::PROFILE_HIGH_EFFICIENCY_ACC_L2;
constexpr QUOR_U8 TAACDescriptor::PROFILE_HIGH_EFFICIENCY_ACC_L3;
constexpr QUOR_U8 TAACDescriptor::PROFILE_HIGH_EFFICIENCY_ACC_L4;
constexpr QUOR_U8 TAACDescriptor::PROFILE_HIGH_EFFICIENCY_ACC_L5;
constexpr QUOR_U8 TAACDescriptor::PROFILE_NOT_SPECIFIED;
constexpr QUOR_U8 TAACDescriptor::PROFILE_NO_AUDIO_INFO;

TAACDescriptor::TAACDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iProfileAndLevel(0), m_bAACTypeFlag(false), m_iAACType(0),
      m_iAdditionalInfoSize(0) {}

TAACDescriptor::~TAACDescriptor() = default;

TAACDescriptor* TAACDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* parsedLength,
                                      QUOR_U16* errorCode) {
    return detail::parseDescriptor<TAACDescriptor>(
        sectionData, dataLength, parsedLength, errorCode, [](TAACDescriptor& object, detail::Bytes descriptor) {
            object.m_iProfileAndLevel = descriptor.u8(2);
            object.m_bAACTypeFlag = descriptor.bit(3, 7);
            detail::Bytes left = descriptor.from(4);
            if (object.m_bAACTypeFlag) {
                if (left.empty()) {
                    QUOR_ISDBT_LOG("%s: TAACDescriptor::parse: Longer data length is required: %u < %u. Aborting!",
                                   detail::LOG_TAG, left.size(), AAC_TYPE_LENGTH);
                    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
                }
                object.m_iAACType = left.u8(0);
                left = left.from(AAC_TYPE_LENGTH);
            }
            object.m_pAdditionalInfo = detail::copyBytes(left, object.m_iAdditionalInfoSize);
            return detail::Outcome::done(descriptor.size() - COMMON_HEADER_LENGTH);
        });
}

} // namespace Quor
