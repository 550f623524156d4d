#pragma once

#include "TISDBTTable.h"
#include "descriptors/TISDBTDescriptor.h"
#include "support/Parse.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// A receiver gets damaged bytes as well as good ones. These helpers damage a good section (or a good descriptor) in
/// every place, parse what comes of it over an exact-size buffer and destroy the result; the sanitizers see each read
/// of one byte too far and each leak.

/// A damaged copy and what was done to it.
struct Damaged {
    std::string how;
    ByteVector wire;
};

/// The first 0, 1, ... bytes of the good ones, without the good ones themselves.
std::vector<Damaged> everyPrefix(const ByteVector& good);

/// Each byte in its turn as 0x00, as 0xFF and with each of its bits flipped.
std::vector<Damaged> everyByteChange(const ByteVector& good);

/// With the section_length that fits the bytes; bytes without a section_length remain as they are.
ByteVector repairedSection(ByteVector wire);

/// With the descriptor_length that fits the bytes; bytes without a descriptor_length remain as they are.
ByteVector repairedDescriptor(ByteVector wire);

namespace survival {

template <class T> ByteVector repaired(const ByteVector& wire) {
    if constexpr (IS_TABLE<T>) {
        return repairedSection(wire);
    } else {
        return repairedDescriptor(wire);
    }
}

/// Reads every byte that a descriptor refers to.
inline unsigned touched(const Quor::TISDBTDescriptor& descriptor) {
    unsigned sum = 0;
    for (QUOR_U32 i = 0; i < descriptor.getDataLength(); ++i) {
        sum += descriptor.getData()[i];
    }
    return sum;
}

template <class T> void expectSound(const T& object) {
    if constexpr (IS_TABLE<T>) {
        const Quor::TISDBTTable& table = object;
        for (const QUOR_U8 tag : taken(table.getDescriptorTags())) {
            const Quor::TISDBTDescriptor* const descriptor = table.getDescriptor(tag);
            ASSERT_NE(descriptor, nullptr);
            EXPECT_EQ(descriptor->getDescriptorTag(), tag);
            EXPECT_LE(touched(*descriptor), 0xFFU * descriptor->getDataLength());
        }
    } else {
        EXPECT_LE(touched(object), 0xFFU * object.getDataLength());
    }
}

/// An object with ERROR_OK, or null with a code and a line: never anything between.
template <class T> void expectSurvival(const ByteVector& wire) {
    const Parsed<T> parsed = parseAny<T>(wire);
    if (parsed.object != nullptr) {
        EXPECT_EQ(parsed.error, Quor::TISDBTTable::ERROR_OK);
        expectSound<T>(*parsed.object);
    } else {
        EXPECT_NE(parsed.error, PRESET_ERROR);
        EXPECT_FALSE(parsed.lines.empty());
    }
}

template <class T> void expectSurvival(const ByteVector& good, const std::vector<Damaged>& damaged) {
    ASSERT_NE(parseAny<T>(good).object, nullptr) << "only damage to good bytes tells something";
    for (const Damaged& each : damaged) {
        SCOPED_TRACE(each.how);
        expectSurvival<T>(each.wire);
        expectSurvival<T>(repaired<T>(each.wire));
        if (testing::Test::HasFailure()) {
            return;
        }
    }
}

} // namespace survival

/// Every prefix of a good section (@p T a table) or descriptor (@p T a descriptor) is survived, as it is and with its
/// length field repaired, so that the cut reaches the loops behind the header.
template <class T> void expectEveryPrefixSurvives(const ByteVector& good) {
    survival::expectSurvival<T>(good, everyPrefix(good));
}

/// Every change of a single byte is survived, as it is and with the length field repaired.
template <class T> void expectEveryByteChangeSurvives(const ByteVector& good) {
    survival::expectSurvival<T>(good, everyByteChange(good));
}
