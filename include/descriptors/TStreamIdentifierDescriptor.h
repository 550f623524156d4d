#ifndef QUOR_TSTREAM_IDENTIFIER_DESCRIPTOR_H
#define QUOR_TSTREAM_IDENTIFIER_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"

namespace Quor {

/// Stream identifier descriptor (ARIB STD-B10, tag 0x52): the component_tag by which other descriptors and applications
/// refer to an elementary stream of the program.
class QUOR_ISDBT_API TStreamIdentifierDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x52;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 1;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TStreamIdentifierDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TStreamIdentifierDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives 1, the bytes of the body that are read. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TStreamIdentifierDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                              QUOR_U16* errorCode);

    /// component_tag, 0 to 255, unique within the program.
    QUOR_U8 getComponentTag() const { return m_iComponentTag; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U8 m_iComponentTag = 0;
};

} // namespace Quor

#endif
