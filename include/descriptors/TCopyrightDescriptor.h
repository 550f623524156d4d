#ifndef QUOR_TCOPYRIGHT_DESCRIPTOR_H
#define QUOR_TCOPYRIGHT_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"

namespace Quor {

/// Copyright descriptor (tag 0x0D). Mind that its body is read as the two fields of a hierarchical transmission
/// descriptor; the copyright identifier of ISO/IEC 13818-1 is only in getData().
class QUOR_ISDBT_API TCopyrightDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x0D;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 3;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TCopyrightDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TCopyrightDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives 3, the bytes of the body that are read. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TCopyrightDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// The lowest bit of the first byte of the body, 0 or 1.
    QUOR_U8 getHierarchicalLevel() const { return m_iHierarchicalLevel; }

    /// The lower 13 bits of the second and third byte of the body.
    QUOR_U16 getReferencePID() const { return m_iReferencePID; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U8 m_iHierarchicalLevel = 0;
    QUOR_U16 m_iReferencePID = 0;
};

} // namespace Quor

#endif
