#include "descriptors/TNetworkNameDescriptor.h"

#include "detail/Log.h"
#include "detail/Shapes.h"
#include "utils/ParserUtils.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | name (8) ...

constexpr U8 TNetworkNameDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TNetworkNameDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TNetworkNameDescriptor::TNetworkNameDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}

TNetworkNameDescriptor::~TNetworkNameDescriptor() = default;

TNetworkNameDescriptor* TNetworkNameDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                      QUOR_U16* err) {
    return detail::parseDescriptor<TNetworkNameDescriptor>(
        data, length, parsedLength, err, [](TNetworkNameDescriptor& object, detail::Bytes descriptor) {
            const detail::Bytes name = descriptor.from(COMMON_HEADER_LENGTH);
            const QUOR_S32 taken = ParserUtils::parseStr(name.data(), object.m_sNetworkName, name.size(), name.size());
            if (static_cast<QUOR_U32>(taken) != name.size()) {
                QUOR_ISDBT_LOG("%s: TNetworkNameDescriptor:: parse: ERROR: parsing Network Name. Aborting!",
                               detail::LOG_TAG);
                return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
            }
            return detail::Outcome::done(name.size());
        });
}

} // namespace Quor
