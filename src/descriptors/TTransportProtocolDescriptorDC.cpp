#include "descriptors/TTransportProtocolDescriptorDC.h"

#include "detail/Log.h"
#include "detail/Shapes.h"

namespace Quor {

constexpr QUOR_U32 TTransportProtocolDescriptorDC::MINIMUM_DESCRIPTOR_SPECIFIC_LENGTH;

namespace {

// from protocol_id on: label and connection | component_tag (8)
constexpr QUOR_U32 COMPONENT_TAG_LENGTH = 1;

} // namespace

TTransportProtocolDescriptorDC::TTransportProtocolDescriptorDC(QUOR_U8* data, QUOR_U32 length)
    : TTransportProtocolDescriptor(DataCarousel, DataCarousel, data, length), m_connection(), m_iComponentTag(0) {}

TTransportProtocolDescriptorDC::TTransportProtocolDescriptorDC(TTransportProtocolDescriptorDC* source)
    : TTransportProtocolDescriptor(DataCarousel, DataCarousel, nullptr, 0), m_connection(source->m_connection),
      m_iComponentTag(source->m_iComponentTag) {}

TTransportProtocolDescriptorDC::~TTransportProtocolDescriptorDC() = default;

QUOR_BOOL TTransportProtocolDescriptorDC::parseData(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                    QUOR_U16* errorCode) {
    const detail::Bytes body(data, length);
    QUOR_U32 left = 0;
    const QUOR_U32 componentTagAt = parseConnection(body, MINIMUM_DESCRIPTOR_SPECIFIC_LENGTH, m_connection, left);
    if (componentTagAt == 0) {
        QUOR_ISDBT_LOG("%s: TTransportProtocolDescriptorDC::parse: Item length not valid: %u. Aborting!",
                       detail::LOG_TAG, left);
        ISDBTUtils::setErrorCode(errorCode, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
        return false;
    }
    m_iComponentTag = body.u8(componentTagAt);
    detail::Outcome::done(componentTagAt + COMPONENT_TAG_LENGTH).report(parsedLength, errorCode);
    return true;
}

} // namespace Quor
