#include "descriptors/TTransportProtocolDescriptorIP.h"

#include "detail/Log.h"
#include "detail/Parse.h"
#include "detail/Strings.h"

namespace Quor {

namespace {

// from protocol_id on: label and connection | alignment_indicator (1) reserved (7) | (URL_length (8) | URL)...
constexpr QUOR_U32 ALIGNMENT_LENGTH = 1;

} // namespace

TTransportProtocolDescriptorIP::TTransportProtocolDescriptorIP(std::string url)
    : TTransportProtocolDescriptorIP(nullptr, 0) {
    detail::add(m_pURLs, detail::Text(url));
}

TTransportProtocolDescriptorIP::TTransportProtocolDescriptorIP(TTransportProtocolDescriptorIP* source)
    : TTransportProtocolDescriptor(IP, IP, nullptr, 0), m_connection(source->m_connection),
      m_bAlignmentIndicator(source->m_bAlignmentIndicator), m_pURLs(detail::copy(source->m_pURLs)) {}

TTransportProtocolDescriptorIP::~TTransportProtocolDescriptorIP() = default;

QUOR_BOOL TTransportProtocolDescriptorIP::parseData(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                    QUOR_U16* errorCode) {
    return detail::parseBody(*this, data, length, parsedLength, errorCode);
}

detail::Outcome TTransportProtocolDescriptorIP::decodeBody(const detail::Bytes& body) {
    QUOR_U32 left = 0;
    const QUOR_U32 alignmentAt = decodeConnection(body, MINIMUM_DESCRIPTOR_SPECIFIC_LENGTH, m_connection, left);
    if (alignmentAt == 0) {
        QUOR_ISDBT_LOG("%s: TTransportProtocolDescriptorIP::parse: Item length not valid: %u. Aborting!",
                       detail::LOG_TAG, left);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    m_bAlignmentIndicator = body.bit(alignmentAt, 7);
    if (!detail::readPrefixedTexts(body.from(alignmentAt + ALIGNMENT_LENGTH), m_pURLs)) {
        // Quirk: the line of another class.
        QUOR_ISDBT_LOG("%s: TApplicationNameDescriptorItem:: parse: ERROR: parsing Name. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    return detail::Outcome::done(body.size());
}

std::string TTransportProtocolDescriptorIP::getURL(QUOR_U8 index) const {
    return detail::get<std::string>(m_pURLs, index);
}

void TTransportProtocolDescriptorIP::addURL(std::string url) {
    detail::add(m_pURLs, detail::Text(url));
}

QUOR_BOOL TTransportProtocolDescriptorIP::removeURL(QUOR_U8 index) {
    return detail::remove(m_pURLs, index);
}

} // namespace Quor
