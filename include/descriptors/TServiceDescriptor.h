#ifndef QUOR_TSERVICE_DESCRIPTOR_H
#define QUOR_TSERVICE_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

#include <string>

namespace Quor {

/// Service descriptor (ARIB STD-B10, tag 0x48, in the service description table): the type of a service, its name and
/// the name of its provider.
class QUOR_ISDBT_API TServiceDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0x48;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 3;

    /// @name Values of service_type
    /// @{
    static constexpr QUOR_U8 SERVICE_DIGITAL_TV = 0x01;
    static constexpr QUOR_U8 SERVICE_DIGITAL_AUDIO = 0x02;
    static constexpr QUOR_U8 SERVICE_TELETEXT = 0x03;
    static constexpr QUOR_U8 SERVICE_NVOD_REFERENCE = 0x04;
    static constexpr QUOR_U8 SERVICE_NVOD_TIME_SHIFTED = 0x05;
    static constexpr QUOR_U8 SERVICE_MOSAIC = 0x06;
    static constexpr QUOR_U8 SERVICE_ADVANCED_CODING_DIGITAL_RADIO = 0x0A;
    static constexpr QUOR_U8 SERVICE_ADVANCED_CODING_MOSAIC = 0x0B;
    static constexpr QUOR_U8 SERVICE_DATA_BROADCASTING = 0x0C;
    static constexpr QUOR_U8 SERVICE_RESERVED_COMMON_INTERFACE = 0x0D;
    static constexpr QUOR_U8 SERVICE_RCS_MAP = 0x0E;
    static constexpr QUOR_U8 SERVICE_RCS_FLS = 0x0F;
    static constexpr QUOR_U8 SERVICE_DVB_MHP = 0x10;
    static constexpr QUOR_U8 SERVICE_DIGITAL_MPEG2_HD_TELEVISION = 0x11;
    static constexpr QUOR_U8 SERVICE_ADVANCED_CODING_DIGITAL_SD_TV = 0x16;
    static constexpr QUOR_U8 SERVICE_ADVANCED_CODING_DIGITAL_NVOD_SD_TIME_SHIFTED_TV = 0x17;
    static constexpr QUOR_U8 SERVICE_ADVANCED_CODING_DIGITAL_NVOD_SD_REFERENCE_TV = 0x18;
    static constexpr QUOR_U8 SERVICE_ADVANCED_CODING_DIGITAL_HD_TV = 0x19;
    static constexpr QUOR_U8 SERVICE_ADVANCED_CODING_DIGITAL_NVOD_HD_TIME_SHIFTED_TV = 0x1A;
    static constexpr QUOR_U8 SERVICE_ADVANCED_CODING_DIGITAL_NVOD_HD_REFERENCE_TV = 0x1B;
    static constexpr QUOR_U8 SERVICE_SPECIAL_VIDEO = 0xA1;
    static constexpr QUOR_U8 SERVICE_SPECIAL_AUDIO = 0xA2;
    static constexpr QUOR_U8 SERVICE_SPECIAL_DATA = 0xA3;
    static constexpr QUOR_U8 SERVICE_ENGINEERING = 0xA4;
    static constexpr QUOR_U8 SERVICE_PROMOTIONAL_VIDEO = 0xA5;
    static constexpr QUOR_U8 SERVICE_PROMOTIONAL_AUDIO = 0xA6;
    static constexpr QUOR_U8 SERVICE_PROMOTIONAL_DATA = 0xA7;
    /// Callers use this name, spelling and all.
    static constexpr QUOR_U8 SERVICE_DATA_SERVICE_FOR_ANTECIPATED_STORAGE = 0xA8;
    static constexpr QUOR_U8 SERVICE_EXCLUSIVE_DATA_SERVICE_FOR_STORAGE = 0xA9;
    static constexpr QUOR_U8 SERVICE_BOOKMARK_LIST = 0xAA;
    static constexpr QUOR_U8 SERVICE_SIMULTANEOUS_SERVER_TYPE = 0xAB;
    static constexpr QUOR_U8 SERVICE_INDEPENDENT_FILE_SERVICE = 0xAC;
    static constexpr QUOR_U8 SERVICE_DATA = 0xC0;
    /// @}

    /// An empty descriptor over the caller's bytes, which are not copied.
    TServiceDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TServiceDescriptor() override;

    /// Parses one descriptor. Bytes behind the service name are ignored.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives the bytes of both names with their length bytes, modulo 256. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(),
    ///                     ERROR_INVALID_STRING for a name that does not fit, or ERROR_INVALID_DESCRIPTOR_LENGTH when
    ///                     the body ends with the provider name. May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TServiceDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// service_type, 0 to 255, also values without a name above.
    QUOR_U8 getServiceType() const { return m_iServiceType; }

    /// The provider name as it is on the wire, in the character coding of the broadcast; may be empty.
    std::string getServiceProviderName() const { return m_sServiceProviderName; }

    /// The service name as it is on the wire, in the character coding of the broadcast; may be empty.
    std::string getServiceName() const { return m_sServiceName; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U8 m_iServiceType = 0;
    detail::Text m_sServiceProviderName{};
    detail::Text m_sServiceName{};
};

} // namespace Quor

#endif
