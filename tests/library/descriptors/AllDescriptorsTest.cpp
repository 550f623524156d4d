// What every descriptor class promises.

#include "support/Outcome.h"
#include "support/Survival.h"
#include "support/TypedRows.h"

#include <gtest/gtest.h>

#include <ostream>

using Quor::TISDBTDescriptor;
using Quor::TISDBTTable;

namespace {

/// A descriptor class: what it must say of itself, and a good descriptor of it.
struct DescriptorClass {
    std::string name;
    QUOR_U8 tag;
    QUOR_U8 minimum;
    ByteVector good;
    QUOR_U32 unheld; ///< bytes of a descriptor that its data holder leaves out

    QUOR_U32 declaredTag;
    QUOR_U32 declaredMinimum;
    TISDBTDescriptor* (*parse)(QUOR_U8*, QUOR_U32, QUOR_U32*, QUOR_U16*);
    void (*survives)(const ByteVector&);
};

/// Names the class in what GoogleTest prints.
void PrintTo(const DescriptorClass& descriptorClass, std::ostream* out) {
    *out << descriptorClass.name;
}

template <class Row> void describe(std::vector<DescriptorClass>& /*classes*/, const Row& /*row*/) {}

template <class T, class In, class Items>
void describe(std::vector<DescriptorClass>& classes, const DescriptorRow<T, In, Items>& row) {
    static_assert(std::is_base_of_v<TISDBTDescriptor, T>, "every descriptor class has the same base");
    static_assert(std::has_virtual_destructor_v<T>, "descriptors are deleted by base");
    static_assert(!std::is_copy_constructible_v<T> && !std::is_copy_assignable_v<T>, "a copy would own what it copied");
    static_assert(std::is_same_v<decltype(T::DESCRIPTOR_TAG), const U8>, "DESCRIPTOR_TAG is a U8");
    static_assert(std::is_same_v<decltype(T::MINIMUM_DESCRIPTOR_LENGTH), const QUOR_U32>, "the minimum is a QUOR_U32");
    static_assert(std::is_same_v<decltype(&T::parse), T* (*)(QUOR_U8*, QUOR_U32, QUOR_U32*, QUOR_U16*)>, "parse");
    classes.push_back({nameOf<T>(), row.tag, row.minimum, row.wire, row.unheld, T::DESCRIPTOR_TAG,
                       T::MINIMUM_DESCRIPTOR_LENGTH,
                       [](QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                          QUOR_U16* error) -> TISDBTDescriptor* { return T::parse(data, length, parsedLength, error); },
                       [](const ByteVector& wire) { survival::expectSurvival<T>(wire); }});
}

std::vector<DescriptorClass> descriptorClasses() {
    std::vector<DescriptorClass> classes;
    forEachRow(classRows(), [&](const auto& row) { describe(classes, row); });
    return classes;
}

class AllDescriptors : public testing::TestWithParam<DescriptorClass> {
protected:
    const QUOR_U8 tag = GetParam().tag;
    const QUOR_U32 minimum = GetParam().minimum;

    /// Parses exactly these bytes, which the header check must refuse: null, the code, this one line; the length
    /// unwritten.
    void expectRefused(const ByteVector& wire, QUOR_U16 code, const std::string& line) const {
        const HeapBytes bytes(wire);
        expectRefused(bytes.data(), bytes.size(), code, line);
    }

    void expectRefused(QUOR_U8* data, QUOR_U32 length, QUOR_U16 code, const std::string& line) const {
        const Lines lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: " + line + " Aborting!"};
        QUOR_U32 parsedLength = PRESET_LENGTH;
        QUOR_U16 error = PRESET_ERROR;
        const LogCapture log;
        const std::unique_ptr<TISDBTDescriptor> parsed(GetParam().parse(data, length, &parsedLength, &error));
        EXPECT_EQ(parsed, nullptr);
        EXPECT_EQ(error, code);
        EXPECT_EQ(parsedLength, PRESET_LENGTH);
        EXPECT_EQ(log.lines(), lines);
        expectLevelAndTag(log);

        const LogCapture again;
        const std::unique_ptr<TISDBTDescriptor> unasked(GetParam().parse(data, length, nullptr, nullptr));
        EXPECT_EQ(unasked, nullptr);
        EXPECT_EQ(again.lines(), lines);
    }

    /// tag and descriptor_length with @p count bytes of zero behind them
    ByteVector zeros(QUOR_U8 first, QUOR_U32 descriptorLength, QUOR_U32 count) const {
        return join({{first, static_cast<QUOR_U8>(descriptorLength)}, fill(count, 0x00)});
    }
};

std::string tags(QUOR_U8 got, QUOR_U8 expected) {
    char text[80];
    std::snprintf(text, sizeof text, "(3) Unexpected Descriptor Tag. Got 0x%02X, instead of 0x%02X.", unsigned{got},
                  unsigned{expected});
    return text;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Each, AllDescriptors, testing::ValuesIn(descriptorClasses()),
                         [](const testing::TestParamInfo<DescriptorClass>& each) { return each.param.name; });

TEST_P(AllDescriptors, DeclareTagAndMinimum) {
    EXPECT_EQ(GetParam().declaredTag, tag);
    EXPECT_EQ(GetParam().declaredMinimum, minimum);
}

TEST_P(AllDescriptors, AcceptAGoodDescriptor) {
    const HeapBytes bytes(GetParam().good);
    QUOR_U16 error = PRESET_ERROR;
    const LogCapture log;
    const std::unique_ptr<TISDBTDescriptor> parsed(GetParam().parse(bytes.data(), bytes.size(), nullptr, &error));
    ASSERT_NE(parsed, nullptr) << testing::PrintToString(log.lines());
    EXPECT_EQ(error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed->getDescriptorTag(), tag);
    EXPECT_EQ(parsed->getData(), bytes.data());
    EXPECT_EQ(parsed->getDataLength(), bytes.size() - GetParam().unheld);
}

TEST_P(AllDescriptors, AcceptAGoodDescriptorWithoutPlacesForLengthAndCode) {
    const HeapBytes bytes(GetParam().good);
    const std::unique_ptr<TISDBTDescriptor> parsed(GetParam().parse(bytes.data(), bytes.size(), nullptr, nullptr));
    EXPECT_NE(parsed, nullptr);
}

TEST_P(AllDescriptors, RefuseANullPointer) {
    for (const QUOR_U32 length : {0U, minimum + 1, minimum + 2, 257U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(length);
        expectRefused(nullptr, length, 2562, "(1) Invalid data.");
    }
}

TEST_P(AllDescriptors, RefuseDataShorterThanTheMinimum) {
    // Whatever the bytes say: neither another tag nor a long descriptor_length is looked at.
    for (QUOR_U32 length = 0; length < minimum + 2; ++length) {
        const std::string line =
            "(2) Longer data length is required: " + std::to_string(length) + " < " + std::to_string(minimum + 2) + ".";
        SCOPED_TRACE(line);
        for (const QUOR_U8 first : {tag, static_cast<QUOR_U8>(tag ^ 0xFFU)}) {
            ByteVector wire = zeros(first, 0xFF, minimum);
            wire.resize(length);
            expectRefused(wire, 2568, line);
        }
    }
}

TEST_P(AllDescriptors, RefuseEveryOtherTag) {
    for (unsigned value = 0; value < 0x100; ++value) {
        const auto other = static_cast<QUOR_U8>(value);
        if (other != tag) {
            SCOPED_TRACE(value);
            // A descriptor_length above the data or below the minimum is not looked at.
            expectRefused(zeros(other, minimum, minimum), 2567, tags(other, tag));
            expectRefused(zeros(other, 0xFF, minimum), 2567, tags(other, tag));
            expectRefused(zeros(other, 0x00, minimum), 2567, tags(other, tag));
        }
    }
}

TEST_P(AllDescriptors, RefuseADescriptorLengthAboveTheData) {
    for (QUOR_U32 descriptorLength = minimum + 1; descriptorLength < 0x100; ++descriptorLength) {
        for (const QUOR_U32 given : {minimum, descriptorLength - 1}) {
            const std::string line = "(4) Longer data length is required: " + std::to_string(descriptorLength + 2) +
                                     " < " + std::to_string(given + 2) + ".";
            SCOPED_TRACE(line);
            expectRefused(zeros(tag, descriptorLength, given), 2568, line);
        }
    }
}

TEST_P(AllDescriptors, RefuseADescriptorLengthBelowTheMinimum) {
    if (minimum == 0) {
        // Nothing is below: an empty body passes the header check.
        ByteVector empty{tag, 0x00};
        QUOR_U16 error = PRESET_ERROR;
        EXPECT_TRUE(TISDBTDescriptor::parseCommonHeader(empty.data(), 2, &error, 0, tag));
        EXPECT_EQ(error, TISDBTTable::ERROR_OK);
    }
    for (QUOR_U32 descriptorLength = 0; descriptorLength < minimum; ++descriptorLength) {
        for (const QUOR_U32 given : {minimum, minimum + 5, QUOR_U32{300}}) {
            const std::string line = "(5) Longer descriptor length is required: " + std::to_string(descriptorLength) +
                                     " < " + std::to_string(minimum) + ".";
            SCOPED_TRACE(line);
            expectRefused(zeros(tag, descriptorLength, given), 2568, line);
        }
    }
}

TEST_P(AllDescriptors, ReadABodyOfTheMinimumLength) {
    // What the class makes of the body is its own matter; the header check lets it pass.
    const HeapBytes bytes(zeros(tag, minimum, minimum));
    QUOR_U16 error = PRESET_ERROR;
    const LogCapture log;
    const std::unique_ptr<TISDBTDescriptor> parsed(GetParam().parse(bytes.data(), bytes.size(), nullptr, &error));
    for (const std::string& line : log.lines()) {
        EXPECT_EQ(line.find("parseCommonHeader"), std::string::npos) << line;
    }
    if (parsed == nullptr) {
        EXPECT_FALSE(log.lines().empty());
    } else {
        EXPECT_EQ(error, TISDBTTable::ERROR_OK);
    }
}

TEST_P(AllDescriptors, SurviveEveryPrefix) {
    const ByteVector& good = GetParam().good;
    for (std::size_t size = 0; size <= good.size(); ++size) {
        SCOPED_TRACE(size);
        ByteVector wire(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size));
        GetParam().survives(wire);
        // With a fitting descriptor_length, so that the cut reaches the body.
        GetParam().survives(repairedDescriptor(wire));
    }
}

TEST_P(AllDescriptors, SurviveEveryChangeOfOneByte) {
    ByteVector wire = GetParam().good;
    for (std::size_t at = 0; at < wire.size(); ++at) {
        SCOPED_TRACE(at);
        const QUOR_U8 good = wire[at];
        for (unsigned value = 0; value < 0x100; ++value) {
            wire[at] = static_cast<QUOR_U8>(value);
            GetParam().survives(wire);
        }
        wire[at] = good;
    }
}

TEST_P(AllDescriptors, SurviveBytesBehindTheDescriptor) {
    // Few, and as many as make a count of eight bits wrap.
    for (const std::size_t from : {1U, 240U}) {
        for (std::size_t count = from; count < from + 30; ++count) {
            SCOPED_TRACE(count);
            for (const unsigned more : {0x00U, 0x01U, 0xFFU}) {
                GetParam().survives(join({GetParam().good, fill(count, static_cast<QUOR_U8>(more))}));
            }
        }
    }
}
