#include "descriptors/TTSInformationDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Parse.h"
#include "detail/Strings.h"

namespace Quor {

// descriptor_tag (8) | descriptor_length (8) | remote_control_key_id (8) |
// length_of_ts_name (6) transmission_type_count (2) | ts_name_char (8) ... | items ...

TTSInformationDescriptor::~TTSInformationDescriptor() = default;

TTSInformationDescriptor* TTSInformationDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                          QUOR_U16* errorCode) {
    return detail::parseDescriptor<TTSInformationDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TTSInformationDescriptor::decode(const detail::Bytes& descriptor) {
    m_iRCKeyID = descriptor.u8(2);
    const QUOR_U32 nameLength = descriptor.u8(3) >> 2;
    const QUOR_U32 typeCount = descriptor.u8(3) & 3U;
    const detail::Bytes name = descriptor.from(4);
    // Quirk: a name of no bytes is read as one behind a length byte, and refused.
    const QUOR_S32 taken = detail::readText(name, nameLength, m_sTSName);
    if (static_cast<QUOR_U32>(taken) != nameLength) {
        QUOR_ISDBT_LOG("%s: TTSInformationDescriptor:: parse: ERROR: parsing TS Name. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    const detail::Bytes items = name.from(nameLength);
    const detail::ItemWalk walk = detail::decodeItems(items, m_pItems, typeCount);
    if (!walk.complete) {
        QUOR_ISDBT_LOG("%s: TTSInformationDescriptor::parse: Invalid item. Aborting!", detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
    }
    // Quirk: the name counts twice, and the bytes before it not at all.
    return detail::Outcome::done(2 * nameLength + items.size() - walk.left.size());
}

void TTSInformationDescriptor::addTransmissionType(TTSInformationDescriptorItem* item) {
    detail::add(m_pItems, item);
}

QUOR_BOOL TTSInformationDescriptor::removeTransmissionType(QUOR_U8 index) {
    return detail::remove(m_pItems, index);
}

} // namespace Quor
