#include "descriptors/TBouquetNameDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Strings.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | name (8) ...

TBouquetNameDescriptor::~TBouquetNameDescriptor() = default;

TBouquetNameDescriptor* TBouquetNameDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                      QUOR_U16* errorCode) {
    return detail::parseDescriptor<TBouquetNameDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TBouquetNameDescriptor::decode(const detail::Bytes& descriptor) {
    const detail::Bytes name = descriptor.from(COMMON_HEADER_LENGTH);
    const QUOR_S32 taken = detail::readText(name, name.size(), m_sBouquetName);
    if (taken < 0) {
        QUOR_ISDBT_LOG("%s: TBouquetNameDescriptor:: parse: ERROR: parsing Bouquet Name. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    return detail::Outcome::done(static_cast<QUOR_U32>(taken));
}

} // namespace Quor
