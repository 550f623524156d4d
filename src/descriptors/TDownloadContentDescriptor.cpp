#include "descriptors/TDownloadContentDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Parse.h"
#include "detail/Strings.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) |
// reboot (1) add_on (1) compatibility_flag (1) module_info_flag (1) text_info_flag (1) reserved (3) |
// component_size (32) | download_id (32) | time_out_value_DII (32) | leak_rate (22) reserved (2) | component_tag (8) |
// with compatibility_flag: compatibilityDescriptorLength (16) | rest of the compatibility descriptor |
// with module_info_flag: num_of_modules (16) | modules |
// private_data_length (8) | private_data |
// with text_info_flag: ISO_639_language_code (24) | text_length (8) | text
constexpr QUOR_U32 FIXED_LENGTH = 19;
constexpr QUOR_U32 COMPATIBILITY_LENGTH_FIELD = 2;
constexpr QUOR_U32 NUM_OF_MODULES_FIELD = 2;
constexpr QUOR_U32 PRIVATE_DATA_LENGTH_FIELD = 1;
constexpr QUOR_U32 LANGUAGE_CODE_LENGTH = 3;
constexpr QUOR_U32 TEXT_LENGTH_FIELD = 1;

} // namespace

TDownloadContentDescriptor::~TDownloadContentDescriptor() = default;

TDownloadContentDescriptor* TDownloadContentDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                              QUOR_U16* errorCode) {
    return detail::parseDescriptor<TDownloadContentDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TDownloadContentDescriptor::decode(const detail::Bytes& descriptor) {
    decodeFixed(descriptor);
    detail::Bytes left = descriptor.from(FIXED_LENGTH);
    detail::Outcome outcome = decodeCompatibility(left);
    if (outcome.succeeded()) {
        outcome = decodeModules(left);
    }
    if (outcome.succeeded()) {
        outcome = decodePrivateData(left);
    }
    if (outcome.succeeded()) {
        outcome = decodeText(left);
    }
    return outcome.succeeded() ? detail::Outcome::done(descriptor.size() - left.size() - COMMON_HEADER_LENGTH)
                               : outcome;
}

void TDownloadContentDescriptor::decodeFixed(const detail::Bytes& descriptor) {
    m_iReboot = descriptor.bit(2, 7);
    m_iAddOn = descriptor.bit(2, 6);
    m_iCompatibilityFlag = descriptor.bit(2, 5);
    m_iModuleInfoFlag = descriptor.bit(2, 4);
    m_iTextInfoFlag = descriptor.bit(2, 3);
    m_iComponentSize = descriptor.u32(3);
    m_iDownloadID = descriptor.u32(7);
    m_iTimeOutValueDII = descriptor.u32(11);
    m_iLeakRate = descriptor.u24(15) >> 2;
    m_iComponentTag = descriptor.u8(18);
}

detail::Outcome TDownloadContentDescriptor::decodeCompatibility(detail::Bytes& left) {
    if (m_iCompatibilityFlag == 0) {
        return detail::Outcome::done();
    }
    // A descriptor's body has at most 255 bytes, so that the high byte of this length says nothing.
    const QUOR_U32 length = COMPATIBILITY_LENGTH_FIELD + left.u8(1);
    if (!left.has(0, length)) {
        QUOR_ISDBT_LOG("%s: TDownloadContentDescriptor::parse: Item length not valid: %u > %u. Aborting!",
                       detail::LOG_TAG, length, left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    detail::ItemWalk walk(left.first(length));
    m_pCompatibilityDesc = walk.next<TCompatibilityDescriptor>();
    left = left.from(length);
    return walk.outcome;
}

detail::Outcome TDownloadContentDescriptor::decodeModules(detail::Bytes& left) {
    if (m_iModuleInfoFlag == 0) {
        return detail::Outcome::done();
    }
    if (!left.has(0, NUM_OF_MODULES_FIELD)) {
        QUOR_ISDBT_LOG("%s: TDownloadContentDescriptor::parse: Item length not valid: %u > %u. Aborting!",
                       detail::LOG_TAG, NUM_OF_MODULES_FIELD, left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    const QUOR_U16 numberOfModules = left.u16(0);
    left = left.from(NUM_OF_MODULES_FIELD);
    const detail::ItemWalk walk = detail::decodeItems(left, m_pItems, numberOfModules);
    if (!walk.complete) {
        QUOR_ISDBT_LOG("%s: TDownloadContentDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_ITEM);
    }
    left = walk.left;
    return detail::Outcome::done();
}

detail::Outcome TDownloadContentDescriptor::decodePrivateData(detail::Bytes& left) {
    if (!detail::readByteArray(left, m_iPrivateDataLength, m_iPrivateData)) {
        QUOR_ISDBT_LOG("%s: TDownloadContentDescriptor:: parse: ERROR: parsing Private Data. Aborting!",
                       detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    left = left.from(PRIVATE_DATA_LENGTH_FIELD + m_iPrivateDataLength);
    return detail::Outcome::done();
}

detail::Outcome TDownloadContentDescriptor::decodeText(detail::Bytes& left) {
    if (m_iTextInfoFlag == 0) {
        return detail::Outcome::done();
    }
    if (detail::readText(left, LANGUAGE_CODE_LENGTH, m_sLanguageCode) != QUOR_S32{LANGUAGE_CODE_LENGTH}) {
        QUOR_ISDBT_LOG("%s: TDownloadContentDescriptor:: parse: ERROR: parsing Language Code. Aborting!",
                       detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    left = left.from(LANGUAGE_CODE_LENGTH);
    const QUOR_U8 textLength = left.u8(0);
    const detail::Bytes text = left.from(TEXT_LENGTH_FIELD);
    if (left.empty() || detail::readText(text, textLength, m_sText) != textLength) {
        // Quirk: the line of another descriptor with a text.
        QUOR_ISDBT_LOG("%s: TComponentDescriptor:: parse: ERROR: parsing Text. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    left = text.from(textLength);
    return detail::Outcome::done();
}

void TDownloadContentDescriptor::addDownloadContentDescriptorItem(TDownloadContentDescriptorItem* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TDownloadContentDescriptor::removeDownloadContentDescriptorItem(QUOR_U8 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
