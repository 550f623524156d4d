#include "descriptors/TTimeShiftedServiceDescriptor.h"

#include "detail/Shapes.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) | reference_service_id (16)
constexpr QUOR_U32 REFERENCE_SERVICE_ID_LENGTH = 2;

} // namespace

constexpr U8 TTimeShiftedServiceDescriptor::DESCRIPTOR_TAG;
constexpr QUOR_U32 TTimeShiftedServiceDescriptor::MINIMUM_DESCRIPTOR_LENGTH;

TTimeShiftedServiceDescriptor::TTimeShiftedServiceDescriptor(QUOR_U8* data, QUOR_U32 length)
    : TISDBTDescriptor(DESCRIPTOR_TAG, data, length), m_iReferenceServiceID(0) {}

TTimeShiftedServiceDescriptor::~TTimeShiftedServiceDescriptor() = default;

TTimeShiftedServiceDescriptor* TTimeShiftedServiceDescriptor::parse(QUOR_U8* data, QUOR_U32 length,
                                                                    QUOR_U32* parsedLength, QUOR_U16* err) {
    return detail::parseDescriptor<TTimeShiftedServiceDescriptor>(
        data, length, parsedLength, err, [](TTimeShiftedServiceDescriptor& object, detail::Bytes descriptor) {
            object.m_iReferenceServiceID = descriptor.u16(2);
            return detail::Outcome::done(REFERENCE_SERVICE_ID_LENGTH);
        });
}

} // namespace Quor
