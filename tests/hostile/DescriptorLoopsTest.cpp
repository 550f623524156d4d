// Every tag in every loop of every table: without a body, with the longest one, and with a length beyond the loop.

#include "hostile/Tables.h"
#include "support/Survival.h"

#include <gmock/gmock.h>

#include <algorithm>

using Quor::TISDBTTable;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

namespace {

constexpr QUOR_U8 STUFFING = 0x42;

class DescriptorLoops : public testing::TestWithParam<DescriptorLoop> {
protected:
    static Parsed<TISDBTTable> parse(const ByteVector& descriptors) {
        return GetParam().parse(GetParam().section(descriptors), nullptr);
    }

    /// The loop is taken as if the descriptor were not there, with a line unless it is stuffing.
    static void expectIgnored(const Parsed<TISDBTTable>& parsed, QUOR_U8 tag) {
        ASSERT_NE(parsed.object, nullptr) << testing::PrintToString(parsed.lines);
        EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
        EXPECT_EQ(parsed->getDescriptor(tag), nullptr);
        EXPECT_THAT(taken(parsed->getDescriptorTags()), IsEmpty());
        char line[64];
        std::snprintf(line, sizeof line, "::parse: Unknown descriptor: 0x%02X. Ignored!", unsigned{tag});
        if (tag == STUFFING && GetParam().stuffing) {
            EXPECT_THAT(parsed.lines, IsEmpty());
        } else {
            EXPECT_THAT(parsed.lines, ElementsAre(EndsWith(line)));
        }
    }
};

template <class Check> void forEveryTag(Check check) {
    for (unsigned tag = 0; tag <= 0xFF; ++tag) {
        SCOPED_TRACE(tag);
        check(static_cast<QUOR_U8>(tag));
    }
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Each, DescriptorLoops, testing::ValuesIn(descriptorLoops()), caseName<DescriptorLoop>);

TEST_P(DescriptorLoops, ADescriptorOfEveryTagWithoutABody) {
    const ByteVector& good = GetParam().bodiless;
    forEveryTag([&](QUOR_U8 tag) {
        const auto parsed = parse(descriptor(tag, {}));
        if (!GetParam().knows(tag)) {
            expectIgnored(parsed, tag);
        } else if (std::find(good.begin(), good.end(), tag) != good.end()) {
            EXPECT_NE(parsed.object, nullptr);
            EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
        } else {
            EXPECT_EQ(parsed.object, nullptr);
            expectTakenOrRefused(parsed);
        }
    });
}

TEST_P(DescriptorLoops, ADescriptorOfEveryTagWith255Bytes) {
    for (const ByteVector& body : {fill(255, 0x00), fill(255, 0xFF), counting(255)}) {
        forEveryTag([&](QUOR_U8 tag) {
            const auto parsed = parse(descriptor(tag, body));
            if (GetParam().knows(tag)) {
                expectTakenOrRefused(parsed);
            } else {
                expectIgnored(parsed, tag);
            }
        });
    }
}

TEST_P(DescriptorLoops, ADescriptorOfEveryTagBeyondTheSection) {
    for (const QUOR_U8 length : hex("04 7F 80 FE FF")) { // the CRC_32 is four bytes long
        forEveryTag([&](QUOR_U8 tag) {
            // The last body byte is missing even if the CRC_32 is taken for it.
            ByteVector wire = GetParam().section({tag, length});
            wire.resize(wire.size() - 1);
            const auto parsed = GetParam().parse(repairedSection(wire), nullptr);
            EXPECT_EQ(parsed.object, nullptr);
            expectTakenOrRefused(parsed);
        });
    }
}

TEST_P(DescriptorLoops, ADescriptorOfEveryTagBeyondItsLoop) {
    // With bytes behind it that can be taken for its body, and for much else.
    for (const QUOR_U8 more : hex("00 01 FF")) {
        forEveryTag([&](QUOR_U8 tag) {
            expectTakenOrRefused(parse({tag, 0xFF}));
            expectTakenOrRefused(GetParam().parse(join({GetParam().section({tag, 0xFF}), fill(300, more)}), nullptr));
        });
    }
}

TEST_P(DescriptorLoops, HalfADescriptorHeader) {
    forEveryTag([&](QUOR_U8 tag) {
        expectTakenOrRefused(parse({tag}));
        expectTakenOrRefused(parse({0x7E, 0x00, tag}));
    });
}
