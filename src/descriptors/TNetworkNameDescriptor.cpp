#include "descriptors/TNetworkNameDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Strings.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | name (8) ...

TNetworkNameDescriptor::~TNetworkNameDescriptor() = default;

TNetworkNameDescriptor* TNetworkNameDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                      QUOR_U16* errorCode) {
    return detail::parseDescriptor<TNetworkNameDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TNetworkNameDescriptor::decode(const detail::Bytes& descriptor) {
    const detail::Bytes name = descriptor.from(COMMON_HEADER_LENGTH);
    const QUOR_S32 taken = detail::readText(name, name.size(), m_sNetworkName);
    if (static_cast<QUOR_U32>(taken) != name.size()) {
        QUOR_ISDBT_LOG("%s: TNetworkNameDescriptor:: parse: ERROR: parsing Network Name. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    return detail::Outcome::done(name.size());
}

} // namespace Quor
