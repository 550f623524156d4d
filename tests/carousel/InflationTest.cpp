#include "Given.h"

#include <gtest/gtest.h>
#include <zlib.h>

using namespace wire;
using dsmcc::ModuleState;
using dsmcc::RefusalKind;

namespace {

ByteVector deflated(const ByteVector& bytes) {
    uLongf size = compressBound(static_cast<uLong>(bytes.size()));
    ByteVector result(size);
    EXPECT_EQ(compress2(result.data(), &size, bytes.data(), static_cast<uLong>(bytes.size()), 9), Z_OK);
    result.resize(size);
    return result;
}

const ByteVector MODULE = fill(1000, 0x61);
const ByteVector DEFLATED = deflated(MODULE);

ByteVector compressedModule(std::size_t originalSize) {
    return join({hex("09 05 78"), u32(originalSize)});
}

/// Announces and sends one compressed module.
void send(Given& given, const ByteVector& onAir, const ByteVector& descriptors) {
    given.take({dataDii({2, 4066}, {{1, onAir.size(), 1, descriptors}})});
    given.take(blocks({}, 4066, onAir));
}

void expectRefusal(const Given& given, ModuleState state, RefusalKind kind, const std::string& text) {
    EXPECT_EQ(given.module(1).state, state);
    EXPECT_EQ(given.content(1), ByteVector());
    ASSERT_EQ(given.module(1).refusals.size(), 1U);
    EXPECT_EQ(given.module(1).refusals[0].kind, kind);
    EXPECT_EQ(given.module(1).refusals[0].text, text);
}

} // namespace

TEST(Inflation, CompressedModule) {
    Given given;
    send(given, DEFLATED, compressedModule(1000));
    EXPECT_EQ(given.module(1).state, ModuleState::Complete);
    EXPECT_EQ(given.module(1).originalSize, 1000U);
    EXPECT_EQ(given.module(1).bytes, DEFLATED);
    EXPECT_EQ(given.content(1), MODULE);
}

TEST(Inflation, CompressionTypeOfArib) {
    Given given;
    send(given, DEFLATED, hex("C2 05 00 000003E8"));
    EXPECT_EQ(given.content(1), MODULE);
}

TEST(Inflation, CompressionMethodIsNotLookedAt) {
    Given given;
    send(given, DEFLATED, hex("09 05 08 000003E8"));
    EXPECT_EQ(given.content(1), MODULE);
}

TEST(Inflation, UnknownCompressionType) {
    Given given;
    send(given, DEFLATED, hex("C2 05 01 000003E8"));
    expectRefusal(given, ModuleState::InflateFailed, RefusalKind::Compression, "compression_type 1 is not known");
}

TEST(Inflation, DescriptorWithoutASizeIsNone) {
    Given given;
    send(given, DEFLATED, hex("C2 04 00 0003E8"));
    EXPECT_FALSE(given.module(1).originalSize);
    EXPECT_EQ(given.content(1), DEFLATED);

    Given both;
    send(both, DEFLATED, hex("09 05 78 000003E8 C2 00"));
    EXPECT_EQ(both.content(1), MODULE);
}

TEST(Inflation, ToNothing) {
    Given given;
    send(given, deflated({}), compressedModule(0));
    EXPECT_EQ(given.module(1).state, ModuleState::Complete);
    EXPECT_EQ(given.content(1), ByteVector());
}

TEST(Inflation, OfNothing) {
    Given given;
    send(given, {}, compressedModule(0));
    expectRefusal(given, ModuleState::InflateFailed, RefusalKind::Inflation,
                  "it does not inflate: the bytes end too early");
}

TEST(Inflation, ToLessThanAnnounced) {
    Given given;
    send(given, DEFLATED, compressedModule(1001));
    expectRefusal(given, ModuleState::OriginalSize, RefusalKind::OriginalSize,
                  "it inflates to 1000 bytes, and 1001 are announced");
}

/// A bomb stops where it should have ended.
TEST(Inflation, ToMoreThanAnnounced) {
    Given given;
    send(given, deflated(fill(3000000, 0)), compressedModule(999));
    expectRefusal(given, ModuleState::OriginalSize, RefusalKind::OriginalSize,
                  "it inflates to more than 999 bytes, and 999 are announced");
}

TEST(Inflation, OfALargeModule) {
    ByteVector module;
    for (unsigned number = 0; number < 300000; ++number) {
        module.push_back(static_cast<QUOR_U8>(number * number / 7));
    }
    Given given;
    send(given, deflated(module), compressedModule(module.size()));
    EXPECT_EQ(given.content(1), module);
}

TEST(Inflation, ThatEndsTooEarly) {
    Given given;
    send(given, ByteVector(DEFLATED.begin(), DEFLATED.end() - 1), compressedModule(1000));
    expectRefusal(given, ModuleState::InflateFailed, RefusalKind::Inflation,
                  "it does not inflate: the bytes end too early");
}

TEST(Inflation, OfDamagedBytes) {
    ByteVector damaged = DEFLATED;
    damaged.back() ^= 0x01;
    Given given;
    send(given, damaged, compressedModule(1000));
    expectRefusal(given, ModuleState::InflateFailed, RefusalKind::Inflation,
                  "it does not inflate: incorrect data check");
    Given other;
    send(other, hex("00112233"), compressedModule(1000));
    expectRefusal(other, ModuleState::InflateFailed, RefusalKind::Inflation,
                  "it does not inflate: incorrect header check");
}

TEST(Inflation, BytesBehindTheEndAreNotLookedAt) {
    Given given;
    send(given, join({DEFLATED, hex("FFFF")}), compressedModule(1000));
    EXPECT_EQ(given.content(1), MODULE);
}

TEST(Inflation, OfMoreThanTheLimit) {
    dsmcc::Limits limits;
    limits.inflated = 999;
    Given given(limits);
    send(given, DEFLATED, compressedModule(1000));
    expectRefusal(given, ModuleState::InflateLimit, RefusalKind::InflationLimit, "inflated it has 1000 bytes");
}

TEST(Inflation, OfMoreThanTheMemoryOfTheCarousel) {
    dsmcc::Limits limits;
    limits.memory = 1000;
    Given given(limits);
    send(given, DEFLATED, compressedModule(1000));
    expectRefusal(given, ModuleState::InflateLimit, RefusalKind::InflationLimit, "inflated it has 1000 bytes");
}
