#include "descriptors/TTransportProtocolDescriptorIP.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"
#include "detail/Strings.h"

namespace Quor {

constexpr QUOR_U32 TTransportProtocolDescriptorIP::MINIMUM_DESCRIPTOR_SPECIFIC_LENGTH;

namespace {

// from protocol_id on: label and connection | alignment_indicator (1) reserved (7) | (URL_length (8) | URL)...
constexpr QUOR_U32 ALIGNMENT_LENGTH = 1;

} // namespace

TTransportProtocolDescriptorIP::TTransportProtocolDescriptorIP(QUOR_U8* data, QUOR_U32 length)
    : TTransportProtocolDescriptor(IP, IP, data, length), m_connection(), m_bAlignmentIndicator(false) {}

TTransportProtocolDescriptorIP::TTransportProtocolDescriptorIP(std::string url)
    : TTransportProtocolDescriptorIP(nullptr, 0) {
    m_pURLs.push_back(std::move(url));
}

TTransportProtocolDescriptorIP::TTransportProtocolDescriptorIP(TTransportProtocolDescriptorIP* source)
    : TTransportProtocolDescriptor(IP, IP, nullptr, 0), m_connection(source->m_connection),
      m_bAlignmentIndicator(source->m_bAlignmentIndicator), m_pURLs(source->m_pURLs) {}

TTransportProtocolDescriptorIP::~TTransportProtocolDescriptorIP() = default;

QUOR_BOOL TTransportProtocolDescriptorIP::parseData(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                    QUOR_U16* errorCode) {
    const detail::Bytes body(data, length);
    QUOR_U32 left = 0;
    const QUOR_U32 alignmentAt = parseConnection(body, MINIMUM_DESCRIPTOR_SPECIFIC_LENGTH, m_connection, left);
    if (alignmentAt == 0) {
        QUOR_ISDBT_LOG("%s: TTransportProtocolDescriptorIP::parse: Item length not valid: %u. Aborting!",
                       detail::LOG_TAG, left);
        ISDBTUtils::setErrorCode(errorCode, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
        return false;
    }
    m_bAlignmentIndicator = body.bit(alignmentAt, 7);
    if (!detail::appendStrings(m_pURLs, body.from(alignmentAt + ALIGNMENT_LENGTH))) {
        // Another class's words; readers of the log depend on them.
        QUOR_ISDBT_LOG("%s: TApplicationNameDescriptorItem:: parse: ERROR: parsing Name. Aborting!", detail::LOG_TAG);
        ISDBTUtils::setErrorCode(errorCode, TISDBTTable::ERROR_INVALID_STRING);
        return false;
    }
    detail::Outcome::done(body.size()).report(parsedLength, errorCode);
    return true;
}

QUOR_U32 TTransportProtocolDescriptorIP::getURLCount() const {
    return detail::count(m_pURLs);
}

std::string TTransportProtocolDescriptorIP::getURL(QUOR_U8 index) const {
    return detail::get(m_pURLs, index);
}

void TTransportProtocolDescriptorIP::addURL(std::string url) {
    m_pURLs.push_back(std::move(url));
}

QUOR_BOOL TTransportProtocolDescriptorIP::removeURL(QUOR_U8 index) {
    return detail::remove(m_pURLs, index);
}

} // namespace Quor
