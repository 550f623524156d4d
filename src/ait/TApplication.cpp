#include "ait/TApplication.h"

#include "ait/TAITFamily.h"
#include "ait/TAITTable.h"
#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Shapes.h"

#include <algorithm>

namespace Quor {

constexpr QUOR_U16 TApplication::TYPE_JAVA;
constexpr QUOR_U16 TApplication::TYPE_NCL;
constexpr QUOR_U8 TApplication::CONTROLCODE_AUTOSTART;
constexpr QUOR_U8 TApplication::CONTROLCODE_PRESENT;
constexpr QUOR_U8 TApplication::CONTROLCODE_DESTROY;
constexpr QUOR_U8 TApplication::CONTROLCODE_KILL;
constexpr QUOR_U8 TApplication::CONTROLCODE_REMOTE;
constexpr QUOR_U8 TApplication::CONTROLCODE_UNBOUND;

namespace {

// organisation_id (32) | application_id (16) | application_control_code (8) |
// reserved (4) application_descriptors_loop_length (12) | descriptors
constexpr QUOR_U32 CONTROL_CODE_AT = 6;
constexpr QUOR_U32 LOOP_LENGTH_AT = 7;
constexpr QUOR_U32 DESCRIPTORS_AT = 9;

detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
    QUOR_ISDBT_LOG("%s: TApplication::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG, needed, left);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
}

void unknown(QUOR_U8 tag) {
    if (tag != detail::STUFFING_TAG) {
        QUOR_ISDBT_LOG("%s: TApplication::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG, unsigned{tag});
    }
}

/// A deep copy of a descriptor that has one class for Ginga-J and one for Ginga-NCL.
template <class Java, class NCL, class Base> std::unique_ptr<Base> copyGinga(Base* source) {
    if (source == nullptr) {
        return nullptr;
    }
    switch (source->getDescriptorTag()) {
    case Java::DESCRIPTOR_TAG:
        return detail::copy(static_cast<Java*>(source));
    case NCL::DESCRIPTOR_TAG:
        return detail::copy(static_cast<NCL*>(source));
    default:
        return nullptr;
    }
}

} // namespace

TApplication::TApplication(QUOR_U8* sectionData, QUOR_U32 dataLength)
    : TISDBTDataHolder(sectionData, dataLength, 0), m_pParentAITTable(nullptr), m_iControlCode(0),
      m_iApplicationType(0) {}

TApplication::TApplication(TApplication* source, int inherit)
    : TISDBTDataHolder(source->getData(), source->getDataLength(), 0), m_pParentAITTable(nullptr),
      m_sHashId(source->m_sHashId), m_iControlCode(source->m_iControlCode),
      m_iApplicationType(source->m_iApplicationType), m_pAppIdentifier(detail::copy(source->m_pAppIdentifier.get())) {
    TAITDescriptors& own = m_descriptors;
    own.m_pApplicationDesc = detail::copy(source->getApplicationDescriptor(inherit, nullptr));
    own.m_pApplicationNameDesc = detail::copy(source->getApplicationNameDescriptor(inherit, nullptr));
    own.m_pApplicationIconDesc = detail::copy(source->getApplicationIconDescriptor(inherit, nullptr));
    own.m_pExternalAppAuthDesc = detail::copy(source->getExternalApplicationAuthorizationDescriptor(inherit, nullptr));
    own.m_pIPSignalingDesc = detail::copy(source->getIPSignalingDescriptor(inherit, nullptr));
    own.m_pPrefetchDesc = detail::copy(source->getPrefetchDescriptor(inherit, nullptr));
    own.m_pDIILocationDesc = detail::copy(source->getDIILocationDescriptor(inherit, nullptr));
    own.m_pGingaAppParamsDesc = copyGinga<TGingaJavaApplicationDescriptor, TGingaNCLApplicationDescriptor>(
        source->getGingaApplicationDescriptor(inherit, nullptr));
    own.m_pGingaAppLocationDesc =
        copyGinga<TGingaJavaApplicationLocationDescriptor, TGingaNCLApplicationLocationDescriptor>(
            source->getGingaApplicationLocationDescriptor(inherit, nullptr));

    TTransportProtocolDescriptor* const transport = source->getTransportProtocolDescriptor(inherit, nullptr);
    if (transport != nullptr) {
        own.m_pTransportProtocolDesc.reset(TTransportProtocolDescriptor::clone(transport));
    }
}

TApplication::~TApplication() = default;

TApplication* TApplication::parse(QUOR_U8* sectionData, QUOR_U32 dataLength, int /*parseDescriptors*/,
                                  QUOR_U32* itemLength, QUOR_U16* errorCode) {
    // Callers that give 6 to 8 bytes vouch for the nine fixed ones.
    const detail::Bytes bytes(sectionData, std::max(dataLength, DESCRIPTORS_AT));
    return parseWithin(bytes, dataLength, itemLength, errorCode);
}

TApplication* TApplication::parseWithin(detail::Bytes bytes, QUOR_U32 dataLength, QUOR_U32* itemLength,
                                        QUOR_U16* errorCode) {
    // A count that has wrapped promises more bytes than there are; who reads the data must not follow it.
    const QUOR_U32 measured = std::min(dataLength, bytes.size());
    return detail::decodeInto(
        std::make_unique<TApplication>(bytes.data(), measured), itemLength, errorCode,
        [=](TApplication& application) { return application.decode(bytes, dataLength, errorCode); });
}

detail::Outcome TApplication::decode(detail::Bytes bytes, QUOR_U32 dataLength, QUOR_U16* errorCode) {
    if (dataLength < TApplicationIdentifier::MINIMUM_DESCRIPTOR_LENGTH) {
        QUOR_ISDBT_LOG("%s: TApplication::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG, dataLength);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    if (!bytes.has(0, DESCRIPTORS_AT)) {
        return tooLong(DESCRIPTORS_AT, bytes.size());
    }
    m_pAppIdentifier.reset(TApplicationIdentifier::parse(bytes.data(), dataLength, 1, nullptr, errorCode));
    if (m_pAppIdentifier == nullptr) {
        QUOR_ISDBT_LOG("%s: TApplication::parse: Invalid Application Identifier. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_ITEM);
    }
    m_sHashId = TApplicationIdentifier::calculateHashID(m_pAppIdentifier.get());
    m_iControlCode = bytes.u8(CONTROL_CODE_AT);

    // Wraps for 6 to 8 bytes; the bytes themselves end the walk then.
    QUOR_U32 stated = dataLength - DESCRIPTORS_AT;
    const QUOR_U16 loopLength = bytes.length12(LOOP_LENGTH_AT);
    if (stated < loopLength) {
        return tooLong(loopLength, stated);
    }
    detail::Bytes left = bytes.from(DESCRIPTORS_AT);
    const detail::Outcome loop = detail::walkLoop(
        AIT_FAMILY, m_descriptors, left, loopLength, errorCode,
        [&](QUOR_U32 bodyLength) {
            return detail::takeStated(stated, bodyLength, stated - TISDBTDescriptor::COMMON_HEADER_LENGTH, tooLong);
        },
        unknown, tooLong);
    return loop.succeeded() ? detail::Outcome::done(dataLength - stated) : loop;
}

const TAITDescriptors* TApplication::commonDescriptors() const {
    return m_pParentAITTable == nullptr ? nullptr : &m_pParentAITTable->m_descriptors;
}

TApplicationDescriptor* TApplication::getApplicationDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TAITDescriptors::m_pApplicationDesc>(m_descriptors, commonDescriptors(), inherit,
                                                                 inherited);
}

TApplicationNameDescriptor* TApplication::getApplicationNameDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TAITDescriptors::m_pApplicationNameDesc>(m_descriptors, commonDescriptors(), inherit,
                                                                     inherited);
}

TApplicationIconDescriptor* TApplication::getApplicationIconDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TAITDescriptors::m_pApplicationIconDesc>(m_descriptors, commonDescriptors(), inherit,
                                                                     inherited);
}

TExternalApplicationAuthorizationDescriptor*
TApplication::getExternalApplicationAuthorizationDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TAITDescriptors::m_pExternalAppAuthDesc>(m_descriptors, commonDescriptors(), inherit,
                                                                     inherited);
}

TTransportProtocolDescriptor* TApplication::getTransportProtocolDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TAITDescriptors::m_pTransportProtocolDesc>(m_descriptors, commonDescriptors(), inherit,
                                                                       inherited);
}

TIPSignalingDescriptor* TApplication::getIPSignalingDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TAITDescriptors::m_pIPSignalingDesc>(m_descriptors, commonDescriptors(), inherit,
                                                                 inherited);
}

TPrefetchDescriptor* TApplication::getPrefetchDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TAITDescriptors::m_pPrefetchDesc>(m_descriptors, commonDescriptors(), inherit, inherited);
}

TDIILocationDescriptor* TApplication::getDIILocationDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TAITDescriptors::m_pDIILocationDesc>(m_descriptors, commonDescriptors(), inherit,
                                                                 inherited);
}

TGingaApplicationDescriptor* TApplication::getGingaApplicationDescriptor(int inherit, int* inherited) const {
    return detail::inherit<&TAITDescriptors::m_pGingaAppParamsDesc>(m_descriptors, commonDescriptors(), inherit,
                                                                    inherited);
}

TGingaApplicationLocationDescriptor* TApplication::getGingaApplicationLocationDescriptor(int inherit,
                                                                                         int* inherited) const {
    return detail::inherit<&TAITDescriptors::m_pGingaAppLocationDesc>(m_descriptors, commonDescriptors(), inherit,
                                                                      inherited);
}

TISDBTDescriptor* TApplication::getDescriptor(QUOR_U8 descriptorTag) const {
    return AIT_FAMILY.get(m_descriptors, descriptorTag);
}

std::list<QUOR_U8>* TApplication::getDescriptorTags() const {
    return AIT_FAMILY.tags(m_descriptors);
}

} // namespace Quor
