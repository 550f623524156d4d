#ifndef QUOR_TDATA_COMPONENT_DESCRIPTOR_H
#define QUOR_TDATA_COMPONENT_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

namespace Quor {

/// Data component descriptor (ARIB STD-B10, tag 0xFD): the coding of a data stream, such as captions or a carousel of
/// an application.
class QUOR_ISDBT_API TDataComponentDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0xFD;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 2;

    /// @name Known values of getDataComponentID()
    /// @{
    static constexpr QUOR_U16 COMPONENT_ID_GINGA_XML_BASE_MMEDIA_CODING = 7;
    static constexpr QUOR_U16 COMPONENT_ID_CAPTION_AND_SUPERIMPOSED = 8;
    static constexpr QUOR_U16 COMPONENT_ID_DATA_DOWNLOAD_SBTVD = 9;
    static constexpr QUOR_U16 COMPONENT_ID_OBJECT_CAROUSEL = 12;
    static constexpr QUOR_U16 COMPONENT_ID_CAPTION_1_SEG = 18;
    static constexpr QUOR_U16 COMPONENT_ID_GINGA_APP_EXECUTING_ENGINE = 160;
    static constexpr QUOR_U16 COMPONENT_ID_GINGA_APP_INFORMATION_TABLE = 163;
    static constexpr QUOR_U16 COMPONENT_ID_SBTVD_PROGRAM_INDEX_CONFIG = 164;
    /// @}

    /// An empty descriptor over the caller's bytes, which are not copied.
    TDataComponentDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TDataComponentDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives length - 2. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TDataComponentDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// data_component_id. Values without a COMPONENT_ID constant are accepted as well.
    QUOR_U16 getDataComponentID() const { return m_iDataComponentID; }

    /// The number of bytes of getAdditionalData(), kept in 8 bits.
    QUOR_U8 getAdditionalDataSize() const { return m_iAdditionalDataSize; }

    /// additional_data_component_info, owned by the descriptor; null when there is none.
    QUOR_U8* getAdditionalData() const { return m_pAdditionalData.get(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U16 m_iDataComponentID = 0;
    QUOR_U8 m_iAdditionalDataSize = 0;
    detail::Array<QUOR_U8> m_pAdditionalData{};
};

} // namespace Quor

#endif
