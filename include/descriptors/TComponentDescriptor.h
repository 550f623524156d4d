#ifndef QUOR_TCOMPONENT_DESCRIPTOR_H
#define QUOR_TCOMPONENT_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

#include <string>

namespace Quor {

/// Component descriptor (ARIB STD-B10, tag 0x50): kind, language and a short text of one component.
class QUOR_ISDBT_API TComponentDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x50;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 6;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TComponentDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TComponentDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives the bytes of the text plus 3, which is 3 less than the body; the text counts modulo
    ///                     256. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(), or
    ///                     ERROR_INVALID_STRING for a language code or a text that does not fit. May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TComponentDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// stream_content, 0 to 15: video, audio, data and the like.
    QUOR_U8 getStreamContent() const { return m_iStreamContent; }

    /// component_type, 0 to 255; its meaning depends on getStreamContent().
    QUOR_U8 getComponentType() const { return m_iComponentType; }

    /// stream_content in the upper eight bits, component_type in the lower.
    QUOR_U16 getStreamContentComponentType() const {
        return static_cast<QUOR_U16>(m_iStreamContent << 8 | m_iComponentType);
    }

    /// component_tag, the same as in the stream identifier descriptor of the elementary stream.
    QUOR_U8 getComponentTag() const { return m_iComponentTag; }

    /// ISO_639_language_code, three letters.
    std::string getLanguageCode() const { return m_sLanguageCode; }

    /// The text as it is on the wire, in the character coding of the broadcast; may be empty.
    std::string getText() const { return m_sText; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U8 m_iStreamContent = 0;
    QUOR_U8 m_iComponentType = 0;
    QUOR_U8 m_iComponentTag = 0;
    detail::Text m_sLanguageCode{};
    detail::Text m_sText{};
};

} // namespace Quor

#endif
