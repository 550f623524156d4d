#include "descriptors/TTransportProtocolDescriptorOC.h"

#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

constexpr QUOR_U32 TTransportProtocolDescriptorOC::MINIMUM_DESCRIPTOR_SPECIFIC_LENGTH;

namespace {

// from protocol_id on: label and connection | component_tag (8)
constexpr QUOR_U32 COMPONENT_TAG_LENGTH = 1;

} // namespace

TTransportProtocolDescriptorOC::TTransportProtocolDescriptorOC(QUOR_U8* data, QUOR_U32 length)
    : TTransportProtocolDescriptor(ObjectCarousel, ObjectCarousel, data, length), m_connection(), m_iComponentTag(0) {}

TTransportProtocolDescriptorOC::TTransportProtocolDescriptorOC(TTransportProtocolDescriptorOC* source)
    : TTransportProtocolDescriptor(ObjectCarousel, ObjectCarousel, nullptr, 0), m_connection(source->m_connection),
      m_iComponentTag(source->m_iComponentTag) {}

TTransportProtocolDescriptorOC::~TTransportProtocolDescriptorOC() = default;

QUOR_BOOL TTransportProtocolDescriptorOC::parseData(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                    QUOR_U16* errorCode) {
    const detail::Bytes body(data, length);
    QUOR_U32 left = 0;
    const QUOR_U32 componentTagAt = parseConnection(body, MINIMUM_DESCRIPTOR_SPECIFIC_LENGTH, m_connection, left);
    if (componentTagAt == 0) {
        QUOR_ISDBT_LOG("%s: TTransportProtocolDescriptorOC::parse: Item length not valid: %u. Aborting!",
                       detail::LOG_TAG, left);
        ISDBTUtils::setErrorCode(errorCode, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
        return false;
    }
    m_iComponentTag = body.u8(componentTagAt);
    detail::Outcome::done(componentTagAt + COMPONENT_TAG_LENGTH).report(parsedLength, errorCode);
    return true;
}

} // namespace Quor
