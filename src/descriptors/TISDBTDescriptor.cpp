#include "descriptors/TISDBTDescriptor.h"

#include "TISDBTTable.h"
#include "detail/Bytes.h"
#include "detail/Log.h"
#include "detail/Memory.h"
#include "utils/QuorISDBTUtils.h"

namespace Quor {

TISDBTDescriptor::~TISDBTDescriptor() = default;

bool TISDBTDescriptor::parseCommonHeader(QUOR_U8* data, QUOR_U32 length, QUOR_U16* errorCode,
                                         QUOR_U8 minimumDescriptorLength, QUOR_U16 expectedDescriptorTag) {
    if (data == nullptr) {
        QUOR_ISDBT_LOG("%s: TISDBTDescriptor::parseCommonHeader: (1) Invalid data. Aborting!", detail::LOG_TAG);
        ISDBTUtils::setErrorCode(errorCode, TISDBTTable::ERROR_INVALID_DATA);
        return false;
    }
    // Kept in 8 bits, as callers' minimums are; with a minimum of 254 or 255 only the emptiness is left to check.
    const auto needed = static_cast<QUOR_U8>(minimumDescriptorLength + COMMON_HEADER_LENGTH);
    if (length < needed || length == 0) {
        QUOR_ISDBT_LOG(
            "%s: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is required: %u < %u. Aborting!",
            detail::LOG_TAG, length, unsigned{needed});
        ISDBTUtils::setErrorCode(errorCode, TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
        return false;
    }
    detail::Memory heap;
    const detail::Bytes descriptor(data, length, heap);
    if (descriptor.u8(0) != expectedDescriptorTag) {
        QUOR_ISDBT_LOG(
            "%s: TISDBTDescriptor::parseCommonHeader: (3) Unexpected Descriptor Tag. Got 0x%02X, instead of 0x%02X. Aborting!",
            detail::LOG_TAG, unsigned{descriptor.u8(0)}, unsigned{expectedDescriptorTag});
        ISDBTUtils::setErrorCode(errorCode, TISDBTTable::ERROR_INVALID_DESCRIPTOR_TAG);
        return false;
    }
    const QUOR_U8 descriptorLength = descriptor.u8(1);
    if (length < descriptorLength + COMMON_HEADER_LENGTH) {
        // Quirk: the needed length comes first here, unlike in (2).
        QUOR_ISDBT_LOG(
            "%s: TISDBTDescriptor::parseCommonHeader: (4) Longer data length is required: %u < %u. Aborting!",
            detail::LOG_TAG, descriptorLength + COMMON_HEADER_LENGTH, length);
        ISDBTUtils::setErrorCode(errorCode, TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
        return false;
    }
    if (descriptorLength < minimumDescriptorLength) {
        QUOR_ISDBT_LOG(
            "%s: TISDBTDescriptor::parseCommonHeader: (5) Longer descriptor length is required: %u < %u. Aborting!",
            detail::LOG_TAG, unsigned{descriptorLength}, unsigned{minimumDescriptorLength});
        ISDBTUtils::setErrorCode(errorCode, TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
        return false;
    }
    ISDBTUtils::setErrorCode(errorCode, TISDBTTable::ERROR_OK);
    return true;
}

} // namespace Quor
