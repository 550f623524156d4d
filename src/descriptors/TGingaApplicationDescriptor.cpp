#include "descriptors/TGingaApplicationDescriptor.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Parse.h"
#include "detail/Strings.h"

namespace Quor {

TGingaApplicationDescriptor::TGingaApplicationDescriptor(TGingaApplicationDescriptor* source)
    : TISDBTDescriptor(source->getDescriptorTag(), nullptr, 0), m_pItems(detail::copy(source->m_pItems)) {}

TGingaApplicationDescriptor::~TGingaApplicationDescriptor() = default;

QUOR_BOOL TGingaApplicationDescriptor::parseData(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                 QUOR_U16* errorCode) {
    return detail::parseBody(*this, data, length, parsedLength, errorCode);
}

detail::Outcome TGingaApplicationDescriptor::decode(const detail::Bytes& descriptor) {
    return decodeBody(descriptor.from(COMMON_HEADER_LENGTH));
}

detail::Outcome TGingaApplicationDescriptor::decodeBody(const detail::Bytes& body) {
    // (parameter_length (8) | parameter)...
    if (!detail::readPrefixedTexts(body, m_pItems)) {
        QUOR_ISDBT_LOG("%s: TGingaApplicationDescriptor:: parse: ERROR: parsing Parameter. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    return detail::Outcome::done(body.size());
}

std::string TGingaApplicationDescriptor::get(QUOR_U32 index) const {
    return detail::get<std::string>(m_pItems, index);
}

void TGingaApplicationDescriptor::add(std::string parameter) {
    detail::add(m_pItems, detail::Text(parameter));
}

QUOR_BOOL TGingaApplicationDescriptor::remove(QUOR_U32 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
