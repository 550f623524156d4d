#pragma once

#include "TISDBTTable.h"
#include "support/Parse.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <type_traits>

/// A constant of a class: its type, its value, and that it can be bound to a reference.
#define EXPECT_CONSTANT(type, name, value)                                                                             \
    static_assert(std::is_same_v<decltype(name), const type>, #name " is a " #type);                                   \
    EXPECT_EQ(name, static_cast<type>(value)) << #name

/// Every line goes out at level 4, under the tag that it begins with.
inline void expectLevelAndTag(const LogCapture& log) {
    for (const LogCapture::Line& line : log.records()) {
        EXPECT_EQ(line.level, 4) << line.text;
        EXPECT_EQ(line.text.substr(0, line.tag.size() + 2), line.tag + ": ");
    }
}

/// Parses a descriptor or an item that must not be accepted: null, the code, exactly these lines, and the length left
/// alone; the same without anywhere to write the code and the length.
template <class T> void expectFailure(const ByteVector& wire, QUOR_U16 code, const Lines& lines) {
    const auto parsed = parseBytes<T>(wire);
    EXPECT_EQ(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, code);
    EXPECT_EQ(parsed.lines, lines);
    EXPECT_EQ(parsed.length, PRESET_LENGTH);

    const HeapBytes bytes(wire);
    const LogCapture log;
    const std::unique_ptr<T> object(T::parse(bytes.data(), bytes.size(), nullptr, nullptr));
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(log.lines(), lines);
    expectLevelAndTag(log);
}

/// Parses a descriptor or an item that must be accepted, and says so with @p length and these lines.
template <class T> Parsed<T> expectSuccess(const ByteVector& wire, QUOR_U32 length, const Lines& lines = {}) {
    auto parsed = parseBytes<T>(wire);
    if (parsed.object == nullptr) {
        throw std::runtime_error("rejected with code " + std::to_string(parsed.error) + ": " +
                                 testing::PrintToString(parsed.lines));
    }
    EXPECT_EQ(parsed.error, Quor::TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, length);
    EXPECT_EQ(parsed.lines, lines);

    const HeapBytes bytes(wire);
    const LogCapture log;
    const std::unique_ptr<T> object(T::parse(bytes.data(), bytes.size(), nullptr, nullptr));
    EXPECT_NE(object, nullptr);
    expectLevelAndTag(log);
    return parsed;
}

/// The same for a descriptor, which also knows its tag and points at the bytes that it was built from.
template <class T> Parsed<T> expectDescriptor(const ByteVector& wire, QUOR_U32 length, const Lines& lines = {}) {
    auto parsed = expectSuccess<T>(wire, length, lines);
    EXPECT_EQ(parsed->getDescriptorTag(), wire.at(0));
    EXPECT_EQ(parsed->getData(), parsed.bytes.data());
    EXPECT_EQ(parsed->getDataLength(), wire.size());
    return parsed;
}

/// The elements of an array that an object owns.
template <class T> std::vector<T> elements(const T* array, std::size_t count) {
    return std::vector<T>(array, array + count);
}
