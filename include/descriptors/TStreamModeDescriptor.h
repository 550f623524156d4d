#ifndef QUOR_TSTREAM_MODE_DESCRIPTOR_H
#define QUOR_TSTREAM_MODE_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"

namespace Quor {

/// Stream mode descriptor (ISO/IEC 13818-6, tag 0x03 of DSM-CC sections): the state of the stream machine.
class QUOR_ISDBT_API TStreamModeDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x03;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 2;

    /// @name Known values of getStreamMode()
    /// @{
    static constexpr QUOR_U8 STREAM_MODE_OPEN = 0;
    static constexpr QUOR_U8 STREAM_MODE_PAUSE = 1;
    static constexpr QUOR_U8 STREAM_MODE_TRANSPORT = 2;
    static constexpr QUOR_U8 STREAM_MODE_TRANSPORT_PAUSE = 3;
    static constexpr QUOR_U8 STREAM_MODE_SEARCH_TRANSPORT = 4;
    static constexpr QUOR_U8 STREAM_MODE_SEARCH_TRANSPORT_PAUSE = 5;
    static constexpr QUOR_U8 STREAM_MODE_PAUSE_SEARCH_TRANSPORT = 6;
    static constexpr QUOR_U8 STREAM_MODE_END_OF_STREAM = 7;
    static constexpr QUOR_U8 STREAM_MODE_PRE_SEARCH_TRANSPORT = 8;
    static constexpr QUOR_U8 STREAM_MODE_PRE_SEARCH_TRANSPORT_PAUSE = 9;
    /// @}

    /// An empty descriptor over the caller's bytes, which are not copied.
    TStreamModeDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TStreamModeDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength is not written; the variable keeps its value. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TStreamModeDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// streamMode, 0 to 255; values without a constant are accepted as well.
    QUOR_U8 getStreamMode() const { return m_iStreamMode; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U8 m_iStreamMode = 0;
};

} // namespace Quor

#endif
