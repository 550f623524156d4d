#include "descriptors/TTransportProtocolDescriptorDC.h"

#include "detail/Log.h"
#include "detail/Parse.h"

namespace Quor {

namespace {

// from protocol_id on: label and connection | component_tag (8)
constexpr QUOR_U32 COMPONENT_TAG_LENGTH = 1;

} // namespace

TTransportProtocolDescriptorDC::TTransportProtocolDescriptorDC(TTransportProtocolDescriptorDC* source)
    : TTransportProtocolDescriptor(DataCarousel, DataCarousel, nullptr, 0), m_connection(source->m_connection),
      m_iComponentTag(source->m_iComponentTag) {}

TTransportProtocolDescriptorDC::~TTransportProtocolDescriptorDC() = default;

QUOR_BOOL TTransportProtocolDescriptorDC::parseData(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                    QUOR_U16* errorCode) {
    return detail::parseBody(*this, data, length, parsedLength, errorCode);
}

detail::Outcome TTransportProtocolDescriptorDC::decodeBody(const detail::Bytes& body) {
    QUOR_U32 left = 0;
    const QUOR_U32 componentTagAt = decodeConnection(body, MINIMUM_DESCRIPTOR_SPECIFIC_LENGTH, m_connection, left);
    if (componentTagAt == 0) {
        QUOR_ISDBT_LOG("%s: TTransportProtocolDescriptorDC::parse: Item length not valid: %u. Aborting!",
                       detail::LOG_TAG, left);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    m_iComponentTag = body.u8(componentTagAt);
    return detail::Outcome::done(componentTagAt + COMPONENT_TAG_LENGTH);
}

} // namespace Quor
