#ifndef QUOR_THIERARCHICAL_TRANSMISSION_DESCRIPTOR_H
#define QUOR_THIERARCHICAL_TRANSMISSION_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"

namespace Quor {

/// Hierarchical transmission descriptor (ARIB STD-B10, tag 0xC0): the other stream of a pair that carries the same
/// content in two qualities.
class QUOR_ISDBT_API THierarchicalTransmissionDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0xC0;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 3;

    /// An empty descriptor over the caller's bytes, which are not copied.
    THierarchicalTransmissionDescriptor(QUOR_U8* data, QUOR_U32 length)
        : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~THierarchicalTransmissionDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives 3, the bytes of the body that are read. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static THierarchicalTransmissionDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                      QUOR_U16* errorCode);

    /// quality_level: 1 when the stream is the one of high quality, 0 of low quality.
    QUOR_U8 getQualityLevel() const { return m_iQualityLevel; }

    /// reference_PID, 13 bits: the PID of the other stream of the pair.
    QUOR_U16 getReferencePID() const { return m_iReferencePID; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U8 m_iQualityLevel = 0;
    QUOR_U16 m_iReferencePID = 0;
};

} // namespace Quor

#endif
