#include "descriptors/TTimeShiftedServiceDescriptor.h"

#include "detail/Family.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) | reference_service_id (16)
constexpr QUOR_U32 REFERENCE_SERVICE_ID_LENGTH = 2;

} // namespace

TTimeShiftedServiceDescriptor::~TTimeShiftedServiceDescriptor() = default;

TTimeShiftedServiceDescriptor* TTimeShiftedServiceDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                    QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return detail::parseDescriptor<TTimeShiftedServiceDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TTimeShiftedServiceDescriptor::decode(const detail::Bytes& descriptor) {
    m_iReferenceServiceID = descriptor.u16(2);
    return detail::Outcome::done(REFERENCE_SERVICE_ID_LENGTH);
}

} // namespace Quor
