#pragma once

#include "support/Parse.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

/// A getter: callable on a const object, with exactly this result.
#define EXPECT_GETTER(type, Class, name)                                                                               \
    static_assert(std::is_same_v<decltype(std::declval<const Class&>().name()), type>, #Class "::" #name)

/// Where a field lies on the wire, and the getter that must give it.
template <class T> struct Field {
    const char* name;
    unsigned byte;  ///< of its first bit; byte 0 is the first that is parsed
    unsigned bit;   ///< its first bit in that byte; bit 7 is the most significant one
    unsigned width; ///< in bits
    std::function<QUOR_U32(const T&)> get;
};

/// The bits of a field as they stand on the wire, read one by one.
inline QUOR_U32 bitsAt(const ByteVector& wire, unsigned byte, unsigned bit, unsigned width) {
    QUOR_U32 value = 0;
    for (unsigned at = byte * 8 + (7 - bit), end = at + width; at != end; ++at) {
        value = value << 1 | (wire.at(at / 8) >> (7 - at % 8) & 1U);
    }
    return value;
}

/// Every field with each bit set alone, and with each bit missing alone, so that no field takes a bit of its neighbour.
/// @param fixed the first bytes of what is parsed, which stay as they are
/// @param count the bytes behind them, which carry the bits
template <class T> void expectFields(const ByteVector& fixed, std::size_t count, const std::vector<Field<T>>& fields) {
    for (const QUOR_U8 others : {QUOR_U8{0x00}, QUOR_U8{0xFF}}) {
        for (std::size_t at = 0; at < count * 8; ++at) {
            ByteVector wire = join({fixed, fill(count, others)});
            wire[fixed.size() + at / 8] ^= static_cast<QUOR_U8>(0x80U >> at % 8);
            SCOPED_TRACE(testing::PrintToString(wire));
            const auto parsed = parseBytes<T>(wire);
            ASSERT_NE(parsed.object, nullptr);
            for (const Field<T>& field : fields) {
                ASSERT_EQ(field.get(*parsed.object), bitsAt(wire, field.byte, field.bit, field.width)) << field.name;
            }
        }
    }
}
