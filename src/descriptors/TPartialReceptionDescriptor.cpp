#include "descriptors/TPartialReceptionDescriptor.h"

#include "detail/Arrays.h"
#include "detail/Shapes.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | service_id (16) ...

constexpr U8 TPartialReceptionDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TPartialReceptionDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TPartialReceptionDescriptor::TPartialReceptionDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iServiceIDCount(0) {}

TPartialReceptionDescriptor::~TPartialReceptionDescriptor() = default;

TPartialReceptionDescriptor* TPartialReceptionDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                                QUOR_U16* err) {
    return detail::parseDescriptor<TPartialReceptionDescriptor>(
        data, length, parsedLength, err, [](TPartialReceptionDescriptor& object, detail::Bytes descriptor) {
            const detail::Bytes services = descriptor.from(COMMON_HEADER_LENGTH);
            object.m_pServiceIDs = detail::copyWords(services, object.m_iServiceIDCount);
            return detail::Outcome::done(services.size());
        });
}

} // namespace Quor
