#include "descriptors/TComponentDescriptor.h"

#include "detail/Log.h"
#include "detail/Shapes.h"
#include "utils/ParserUtils.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) | reserved_future_use (4) stream_content (4) |
// component_type (8) | component_tag (8) | ISO_639_language_code (24) | text_char (8) ...
constexpr QUOR_U32 LANGUAGE_CODE_AT = 5;
constexpr QUOR_U32 LANGUAGE_CODE_LENGTH = 3;

} // namespace

constexpr U8 TComponentDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TComponentDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TComponentDescriptor::TComponentDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iStreamContent(0), m_iComponentType(0), m_iComponentTag(0) {}

TComponentDescriptor::~TComponentDescriptor() = default;

TComponentDescriptor* TComponentDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* parsedLength,
                                                  QUOR_U16* errorCode) {
    return detail::parseDescriptor<TComponentDescriptor>(
        sectionData, dataLength, parsedLength, errorCode, [](TComponentDescriptor& object, detail::Bytes descriptor) {
            object.m_iStreamContent = descriptor.u8(2) & 0x0FU;
            object.m_iComponentType = descriptor.u8(3);
            object.m_iComponentTag = descriptor.u8(4);
            const detail::Bytes language = descriptor.from(LANGUAGE_CODE_AT);
            if (ParserUtils::parseStr(language.data(), object.m_sLanguageCode, LANGUAGE_CODE_LENGTH, language.size()) !=
                QUOR_S32{LANGUAGE_CODE_LENGTH}) {
                QUOR_ISDBT_LOG("%s: TComponentDescriptor:: parse: ERROR: parsing Language Code. Aborting!",
                               detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
            }
            const detail::Bytes text = language.from(LANGUAGE_CODE_LENGTH);
            const QUOR_S32 textLength = ParserUtils::parseStr(text.data(), object.m_sText, text.size(), text.size());
            if (textLength < 0) {
                QUOR_ISDBT_LOG("%s: TComponentDescriptor:: parse: ERROR: parsing Text. Aborting!", detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
            }
            // Without the three bytes before the language code; callers depend on this value.
            return detail::Outcome::done(static_cast<QUOR_U32>(textLength) + LANGUAGE_CODE_LENGTH);
        });
}

QUOR_U16 TComponentDescriptor::getStreamContentComponentType() const {
    return static_cast<QUOR_U16>(m_iStreamContent << 8 | m_iComponentType);
}

} // namespace Quor
