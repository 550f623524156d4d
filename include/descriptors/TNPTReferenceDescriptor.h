#ifndef QUOR_TNPT_REFERENCE_DESCRIPTOR_H
#define QUOR_TNPT_REFERENCE_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"

namespace Quor {

/// NPT reference descriptor (ISO/IEC 13818-6, tag 0x01 of DSM-CC sections): how the normal play time of a content runs
/// against the system time clock.
class QUOR_ISDBT_API TNPTReferenceDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x01;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 18;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TNPTReferenceDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TNPTReferenceDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength is not written; the variable keeps its value. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TNPTReferenceDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// postDiscontinuityIndicator: whether the reference holds only after the next discontinuity of the clock.
    QUOR_BOOL isPostDiscontinuity() const { return m_bPostDiscontinuity; }

    /// contentId, 0 to 127.
    QUOR_U8 getDSMCCContentID() const { return m_iDSMCCContentID; }

    /// Bit 32 of STC_Reference, 0 or 1.
    QUOR_U8 getSTCReferenceH() const { return m_iSTCReferenceH; }

    /// The low 32 bits of STC_Reference, in units of 1/90000 s.
    QUOR_U32 getSTCReferenceL() const { return m_iSTCReferenceL; }

    /// Bit 32 of NPT_Reference, 0 or 1.
    QUOR_U8 getNPTReferenceH() const { return m_iNPTReferenceH; }

    /// The low 32 bits of NPT_Reference, in units of 1/90000 s.
    QUOR_U32 getNPTReferenceL() const { return m_iNPTReferenceL; }

    /// scaleNumerator of the speed of the normal play time.
    QUOR_U16 getScaleNumerator() const { return m_iScaleNumerator; }

    /// scaleDenominator of the speed of the normal play time; may be 0.
    QUOR_U16 getScaleDenominator() const { return m_iScaleDenominator; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_BOOL m_bPostDiscontinuity = false;
    QUOR_U8 m_iDSMCCContentID = 0;
    QUOR_U8 m_iSTCReferenceH = 0;
    QUOR_U32 m_iSTCReferenceL = 0;
    QUOR_U8 m_iNPTReferenceH = 0;
    QUOR_U32 m_iNPTReferenceL = 0;
    QUOR_U16 m_iScaleNumerator = 0;
    QUOR_U16 m_iScaleDenominator = 0;
};

} // namespace Quor

#endif
