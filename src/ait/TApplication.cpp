#include "ait/TApplication.h"

#include "ait/TAITFamily.h"
#include "ait/TAITTable.h"
#include "detail/Log.h"
#include "detail/Parse.h"
#include "detail/Strings.h"

namespace Quor {

namespace {

// organisation_id (32) | application_id (16) | application_control_code (8) |
// reserved (4) application_descriptors_loop_length (12) | descriptors
constexpr QUOR_U32 CONTROL_CODE_AT = 6;
constexpr QUOR_U32 LOOP_LENGTH_AT = 7;
constexpr QUOR_U32 DESCRIPTORS_AT = 9;

struct Walk {
    detail::Bytes left;
    QUOR_U32 stated; ///< bytes left as the section counts them; it may wrap

    detail::Outcome take(QUOR_U32 bodyLength) {
        return detail::takeStated(*this, bodyLength, TISDBTDescriptor::COMMON_HEADER_LENGTH);
    }

    static detail::Outcome tooLong(QUOR_U32 needed, QUOR_U32 left) {
        QUOR_ISDBT_LOG("%s: TApplication::parse: Item length not valid: %u > %u. Aborting!", detail::LOG_TAG, needed,
                       left);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }

    static void unknown(QUOR_U8 tag) {
        if (tag != detail::STUFFING_TAG) {
            QUOR_ISDBT_LOG("%s: TApplication::parse: Unknown descriptor: 0x%02X. Ignored!", detail::LOG_TAG,
                           unsigned{tag});
        }
    }
};

} // namespace

TApplication::TApplication(TApplication* source, int inherit)
    : TISDBTDataHolder(source->getData(), source->getDataLength(), 0), m_sHashId(source->m_sHashId),
      m_iControlCode(source->m_iControlCode), m_iApplicationType(source->m_iApplicationType),
      m_pAppIdentifier(detail::copy(source->m_pAppIdentifier.get())) {
    AITFamily::copy(source->m_descriptors, m_descriptors);
    if (inherit != 0 && source->m_pCommon != nullptr) {
        AITFamily::copy(*source->m_pCommon, m_descriptors);
    }
}

TApplication::~TApplication() = default;

TApplication* TApplication::parse(QUOR_U8* data, QUOR_U32 length, int /*parseDescriptors*/, QUOR_U32* parsedLength,
                                  QUOR_U16* errorCode) {
    // Callers that give 6 to 8 bytes vouch for the nine fixed ones.
    return detail::parseEntry<TApplication>(data, length, parsedLength, errorCode, DESCRIPTORS_AT);
}

detail::Outcome TApplication::decode(const detail::Bytes& entry, QUOR_U32 stated) {
    if (stated < TApplicationIdentifier::MINIMUM_DESCRIPTOR_LENGTH) {
        QUOR_ISDBT_LOG("%s: TApplication::parse: Item length not valid: %u. Aborting!", detail::LOG_TAG, stated);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    if (!entry.has(0, DESCRIPTORS_AT)) {
        return Walk::tooLong(DESCRIPTORS_AT, entry.size());
    }
    m_pAppIdentifier = detail::ItemWalk(entry).next<TApplicationIdentifier>();
    if (m_pAppIdentifier == nullptr) {
        QUOR_ISDBT_LOG("%s: TApplication::parse: Invalid Application Identifier. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_ITEM);
    }
    const std::string hashId = TApplicationIdentifier::calculateHashID(m_pAppIdentifier.get());
    m_sHashId = detail::makeText(hashId.data(), static_cast<QUOR_U32>(hashId.size()), entry.memory());
    m_iControlCode = entry.u8(CONTROL_CODE_AT);
    // With 6 to 8 bytes the count wraps; the bytes themselves end the walk then.
    return detail::walkEntryLoop<Walk>(AITFamily::FAMILY, m_descriptors, entry, stated, DESCRIPTORS_AT,
                                       entry.length12(LOOP_LENGTH_AT));
}

void TApplication::setParentAITTable(TAITTable* parent) {
    m_pCommon = parent == nullptr ? nullptr : &parent->m_descriptors;
}

std::list<QUOR_U8>* TApplication::getDescriptorTags() const {
    return AITFamily::FAMILY.tags(m_descriptors);
}

} // namespace Quor
