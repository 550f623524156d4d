#ifndef QUOR_TTIME_SHIFTED_SERVICE_DESCRIPTOR_H
#define QUOR_TTIME_SHIFTED_SERVICE_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"

namespace Quor {

/// Time shifted service descriptor (ARIB STD-B10, tag 0x4C, in the service description table): the near video on demand
/// group that a time-shifted service belongs to.
class QUOR_ISDBT_API TTimeShiftedServiceDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x4C;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 2;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TTimeShiftedServiceDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TTimeShiftedServiceDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives the bytes that were decoded, 2. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TTimeShiftedServiceDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                QUOR_U16* errorCode);

    /// reference_service_id: the NVOD reference service that stands for the group.
    QUOR_U16 getReferenceServiceID() const { return m_iReferenceServiceID; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U16 m_iReferenceServiceID = 0;
};

} // namespace Quor

#endif
