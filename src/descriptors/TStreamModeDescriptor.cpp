#include "descriptors/TStreamModeDescriptor.h"

#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | streamMode (8) | reserved (8)

constexpr U8 TStreamModeDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TStreamModeDescriptor::MINIMUM_DESCRIPTOR_LENGTH;
constexpr QUOR_U8 TStreamModeDescriptor::STREAM_MODE_OPEN;
constexpr QUOR_U8 TStreamModeDescriptor::STREAM_MODE_PAUSE;
constexpr QUOR_U8 TStreamModeDescriptor::STREAM_MODE_TRANSPORT;
constexpr QUOR_U8 TStreamModeDescriptor::STREAM_MODE_TRANSPORT_PAUSE;
constexpr QUOR_U8 TStreamModeDescriptor::STREAM_MODE_SEARCH_TRANSPORT;
constexpr QUOR_U8 TStreamModeDescriptor::STREAM_MODE_SEARCH_TRANSPORT_PAUSE;
constexpr QUOR_U8 TStreamModeDescriptor::STREAM_MODE_PAUSE_SEARCH_TRANSPORT;
constexpr QUOR_U8 TStreamModeDescriptor::STREAM_MODE_END_OF_STREAM;
constexpr QUOR_U8 TStreamModeDescriptor::STREAM_MODE_PRE_SEARCH_TRANSPORT;
constexpr QUOR_U8 TStreamModeDescriptor::STREAM_MODE_PRE_SEARCH_TRANSPORT_PAUSE;

TStreamModeDescriptor::TStreamModeDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iStreamMode(0) {}

TStreamModeDescriptor::~TStreamModeDescriptor() = default;

TStreamModeDescriptor* TStreamModeDescriptor::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* parsedLength,
                                                    QUOR_U16* errorCode) {
    return detail::parseDescriptor<TStreamModeDescriptor>(sectionData, dataLength, parsedLength, errorCode,
                                                          [](TStreamModeDescriptor& object, detail::Bytes descriptor) {
                                                              object.m_iStreamMode = descriptor.u8(2);
                                                              return detail::Outcome::done();
                                                          });
}

} // namespace Quor
