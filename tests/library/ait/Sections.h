#pragma once

#include "support/Bytes.h"

/// The wire form of application information tables.
namespace ait {

constexpr QUOR_U8 TABLE_ID = 0x74;

/// One entry of the application loop: organisation_id, application_id, application_control_code,
/// application_descriptors_loop_length, descriptors.
inline ByteVector application(QUOR_U32 organisation, unsigned id, QUOR_U8 control, const ByteVector& descriptors = {}) {
    return join({u16(organisation >> 16), u16(organisation & 0xFFFFU), u16(id), {control}, loopOf(descriptors)});
}

/// common_descriptors_length, common descriptors, application_loop_length, applications.
inline ByteVector loops(const ByteVector& common, const ByteVector& applications) {
    return join({loopOf(common), loopOf(applications)});
}

/// A section of application type 9, version 0.
inline ByteVector section(const ByteVector& common, const ByteVector& applications) {
    return longSection(TABLE_ID, {0x0009}, loops(common, applications));
}

/// A section of application type 9 whose section_length is what it is told, with these bytes behind the long header,
/// where the CRC_32 may be among them.
inline ByteVector sectionOfLength(unsigned sectionLength, const ByteVector& behindTheHeader) {
    return join({{TABLE_ID}, u16(sectionLength, 0xB000), hex("0009 C1 00 00"), behindTheHeader});
}

} // namespace ait
