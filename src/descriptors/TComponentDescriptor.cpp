#include "descriptors/TComponentDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Strings.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) | reserved_future_use (4) stream_content (4) |
// component_type (8) | component_tag (8) | ISO_639_language_code (24) | text_char (8) ...
constexpr QUOR_U32 LANGUAGE_CODE_AT = 5;
constexpr QUOR_U32 LANGUAGE_CODE_LENGTH = 3;

} // namespace

TComponentDescriptor::~TComponentDescriptor() = default;

TComponentDescriptor* TComponentDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                  QUOR_U16* errorCode) {
    return detail::parseDescriptor<TComponentDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TComponentDescriptor::decode(const detail::Bytes& descriptor) {
    m_iStreamContent = descriptor.u8(2) & 0x0FU;
    m_iComponentType = descriptor.u8(3);
    m_iComponentTag = descriptor.u8(4);
    const detail::Bytes language = descriptor.from(LANGUAGE_CODE_AT);
    if (detail::readText(language, LANGUAGE_CODE_LENGTH, m_sLanguageCode) != QUOR_S32{LANGUAGE_CODE_LENGTH}) {
        QUOR_ISDBT_LOG("%s: TComponentDescriptor:: parse: ERROR: parsing Language Code. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    const detail::Bytes text = language.from(LANGUAGE_CODE_LENGTH);
    const QUOR_S32 textLength = detail::readText(text, text.size(), m_sText);
    if (textLength < 0) {
        QUOR_ISDBT_LOG("%s: TComponentDescriptor:: parse: ERROR: parsing Text. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    // Quirk: without the three bytes before the language code.
    return detail::Outcome::done(static_cast<QUOR_U32>(textLength) + LANGUAGE_CODE_LENGTH);
}

} // namespace Quor
