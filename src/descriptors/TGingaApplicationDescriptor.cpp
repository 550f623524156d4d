#include "descriptors/TGingaApplicationDescriptor.h"

#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Outcome.h"
#include "detail/Strings.h"

namespace Quor {

constexpr QUOR_U32 TGingaApplicationDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TGingaApplicationDescriptor::TGingaApplicationDescriptor(QUOR_U8 tag, QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(tag, data, length) {}

TGingaApplicationDescriptor::TGingaApplicationDescriptor(TGingaApplicationDescriptor* source)
    : TISDBTDescriptor(source->getDescriptorTag(), nullptr, 0), m_pItems(source->m_pItems) {}

TGingaApplicationDescriptor::~TGingaApplicationDescriptor() = default;

QUOR_BOOL TGingaApplicationDescriptor::parseData(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                 QUOR_U16* errorCode) {
    // (parameter_length (8) | parameter)...
    if (!detail::appendStrings(m_pItems, detail::Bytes(data, length))) {
        QUOR_ISDBT_LOG("%s: TGingaApplicationDescriptor:: parse: ERROR: parsing Parameter. Aborting!", detail::LOG_TAG);
        ISDBTUtils::setErrorCode(errorCode, TISDBTTable::ERROR_INVALID_STRING);
        return false;
    }
    detail::Outcome::done(length).report(parsedLength, errorCode);
    return true;
}

QUOR_U32 TGingaApplicationDescriptor::size() const {
    return detail::count(m_pItems);
}

std::string TGingaApplicationDescriptor::get(QUOR_U32 index) const {
    return detail::get(m_pItems, index);
}

void TGingaApplicationDescriptor::add(std::string parameter) {
    m_pItems.push_back(std::move(parameter));
}

QUOR_BOOL TGingaApplicationDescriptor::remove(QUOR_U32 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
