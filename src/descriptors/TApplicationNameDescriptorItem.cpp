#include "descriptors/TApplicationNameDescriptorItem.h"

#include "detail/Log.h"
#include "detail/Parse.h"
#include "detail/Strings.h"

namespace Quor {

namespace {

// ISO_639_language_code (24) | application_name_length (8) | application_name
constexpr QUOR_U32 LANGUAGE_CODE_LENGTH = 3;
constexpr QUOR_U32 MINIMUM_ITEM_LENGTH = 4;

} // namespace

TApplicationNameDescriptorItem::TApplicationNameDescriptorItem(std::string languageCode, std::string name)
    : m_sLanguageCode(languageCode), m_sName(name) {}

TApplicationNameDescriptorItem::TApplicationNameDescriptorItem(TApplicationNameDescriptorItem* source)
    : m_sLanguageCode(source->m_sLanguageCode), m_sName(source->m_sName) {}

TApplicationNameDescriptorItem::~TApplicationNameDescriptorItem() = default;

TApplicationNameDescriptorItem* TApplicationNameDescriptorItem::parse(QUOR_U8* data, QUOR_U32 length,
                                                                      QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseItem<TApplicationNameDescriptorItem>(data, length, parsedLength, errorCode);
}

detail::Outcome TApplicationNameDescriptorItem::decode(const detail::Bytes& left) {
    if (left.size() < MINIMUM_ITEM_LENGTH) {
        QUOR_ISDBT_LOG("%s: TApplicationNameDescriptorItem::parse: Item length not valid: %u. Aborting!",
                       detail::LOG_TAG, left.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    if (detail::readText(left, LANGUAGE_CODE_LENGTH, m_sLanguageCode) != QUOR_S32{LANGUAGE_CODE_LENGTH}) {
        QUOR_ISDBT_LOG("%s: TApplicationNameDescriptorItem:: parse: ERROR: parsing Language Code. Aborting!",
                       detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    const detail::Bytes name = left.from(LANGUAGE_CODE_LENGTH);
    const QUOR_S32 taken = detail::readPrefixedText(name, m_sName);
    if (taken < 0) {
        QUOR_ISDBT_LOG("%s: TApplicationNameDescriptorItem:: parse: ERROR: parsing Name. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    return detail::Outcome::done((static_cast<QUOR_U32>(taken) + LANGUAGE_CODE_LENGTH) & 0xFFU);
}

} // namespace Quor
