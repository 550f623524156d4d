#include "descriptors/TBouquetNameDescriptor.h"

#include "detail/Log.h"
#include "detail/Shapes.h"
#include "utils/ParserUtils.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | name (8) ...

constexpr U8 TBouquetNameDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TBouquetNameDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TBouquetNameDescriptor::TBouquetNameDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}

TBouquetNameDescriptor::~TBouquetNameDescriptor() = default;

TBouquetNameDescriptor* TBouquetNameDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                      QUOR_U16* err) {
    return detail::parseDescriptor<TBouquetNameDescriptor>(
        data, length, parsedLength, err, [](TBouquetNameDescriptor& object, detail::Bytes descriptor) {
            const detail::Bytes name = descriptor.from(COMMON_HEADER_LENGTH);
            const QUOR_S32 taken = ParserUtils::parseStr(name.data(), object.m_sBouquetName, name.size(), name.size());
            if (taken < 0) {
                QUOR_ISDBT_LOG("%s: TBouquetNameDescriptor:: parse: ERROR: parsing Bouquet Name. Aborting!",
                               detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
            }
            return detail::Outcome::done(static_cast<QUOR_U32>(taken));
        });
}

} // namespace Quor
