#include "Given.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace wire;
using dsmcc::ObjectKind;
using dsmcc::RefusalKind;
using testing::IsEmpty;

namespace {

/// An object carousel of one module, all there.
void send(Given& given, const ByteVector& module) {
    given.take({objectDii({2, 4066}, {{1, module.size()}})});
    given.take(blocks({}, 4066, module));
}

class Objects : public testing::Test {
protected:
    const std::vector<dsmcc::Object>& objects(const ByteVector& module) {
        send(m_given, module);
        return m_given.module(1).objects;
    }
    const std::vector<dsmcc::Refusal>& refusals() const { return m_given.module(1).refusals; }

    void expectRefusal(RefusalKind kind, std::size_t at, const std::string& text) const {
        ASSERT_EQ(refusals().size(), 1U);
        EXPECT_EQ(refusals()[0].kind, kind);
        EXPECT_EQ(refusals()[0].at, at);
        EXPECT_EQ(refusals()[0].text, text);
    }

    ByteVector contentOf(const dsmcc::Object& object) const {
        const ByteVector all = m_given.content(1);
        const auto begin = all.begin() + static_cast<std::ptrdiff_t>(object.contentAt);
        return {begin, begin + static_cast<std::ptrdiff_t>(object.contentSize)};
    }

private:
    Given m_given;
};

/// str and ste: a description "v", 90 seconds and 500 microseconds, sound and pictures.
const ByteVector STREAM = hex("01 76 0000005A 000001F4 FF FF 00");
const ByteVector EVENTS = hex("0002 05 73746100 00 04 656E6400");

} // namespace

TEST_F(Objects, FilesWithTheirContent) {
    const auto& found = objects(join({file(hex("01"), text("Um")), file(hex("00000001"), {})}));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].kind, ObjectKind::File);
    EXPECT_EQ(found[0].key, hex("01"));
    EXPECT_EQ(found[0].at, 0U);
    EXPECT_EQ(found[0].announcedSize, 2U);
    EXPECT_EQ(contentOf(found[0]), text("Um"));
    EXPECT_EQ(found[1].key, hex("00000001")); // another one
    EXPECT_EQ(found[1].contentSize, 0U);
    EXPECT_THAT(refusals(), IsEmpty());
}

TEST_F(Objects, FileAsItIsOnAir) {
    const auto& found = objects(hex("42494F50 01 00 00 00 0000002D"
                                    "02 0A0B 00000004 66696C00"
                                    "0012 0000000000000003 72 08 746578742F 6E636C"
                                    "01 00000007 0001 EE"
                                    "00000007 00000003 414243"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].key, hex("0A0B"));
    EXPECT_EQ(found[0].descriptors.at(0).tag, dsmcc::Descriptor::CONTENT_TYPE);
    EXPECT_EQ(found[0].descriptors.at(0).body, text("text/ncl"));
    EXPECT_EQ(contentOf(found[0]), text("ABC"));
}

TEST_F(Objects, ContentLengthCountsNotContentSize) {
    const auto& found = objects(join({object("fil", hex("01"), hex("0000000000000009"), counted32(text("Um"))),
                                      object("fil", hex("02"), {}, counted32(text("Dois")))}));
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].announcedSize, 9U);
    EXPECT_EQ(contentOf(found[0]), text("Um"));
    EXPECT_FALSE(found[1].announcedSize);
    EXPECT_EQ(contentOf(found[1]), text("Dois"));
}

TEST_F(Objects, Directory) {
    const auto& found =
        objects(directory("dir", hex("01"), {{"a.ncl", "fil", 2, hex("05")}, {"b", "dir", 3, hex("06")}}));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].kind, ObjectKind::Directory);
    ASSERT_EQ(found[0].bindings.size(), 2U);
    EXPECT_EQ(found[0].bindings[0].name, "a.ncl");
    EXPECT_TRUE(found[0].bindings[0].safe);
    EXPECT_EQ(found[0].bindings[0].kind, ObjectKind::File);
    EXPECT_EQ(found[0].bindings[0].ior.location->moduleId, 2);
    EXPECT_EQ(found[0].bindings[0].ior.location->objectKey, hex("05"));
    EXPECT_FALSE(found[0].bindings[0].size);
    EXPECT_EQ(found[0].bindings[1].kind, ObjectKind::Directory);
}

TEST_F(Objects, BindingWithItsSizeAndSeveralComponents) {
    const ByteVector bound = join({hex("02 02 6100 04 64697200 02 6200 04 46494C00 01"), ior("fil", 2, 1, hex("05")),
                                   hex("0008 0000000000000123")});
    const auto& found = objects(object("dir", hex("01"), {}, join({hex("0001"), bound})));
    ASSERT_EQ(found.at(0).bindings.size(), 1U);
    EXPECT_EQ(found[0].bindings[0].name, "a/b");
    EXPECT_TRUE(found[0].bindings[0].safe);
    EXPECT_EQ(found[0].bindings[0].kind, ObjectKind::File); // in capitals
    EXPECT_EQ(found[0].bindings[0].size, 0x123U);
}

TEST_F(Objects, Stream) {
    const auto& found = objects(object("str", hex("01"), STREAM, join({hex("01"), objectTap(0x0020)})));
    ASSERT_TRUE(found.at(0).stream);
    EXPECT_EQ(found[0].stream->description, "v");
    EXPECT_EQ(found[0].stream->seconds, 90);
    EXPECT_EQ(found[0].stream->microseconds, 500U);
    EXPECT_TRUE(found[0].stream->audio);
    EXPECT_TRUE(found[0].stream->video);
    EXPECT_FALSE(found[0].stream->data);
    EXPECT_EQ(found[0].stream->taps.at(0).associationTag, 0x0020);
}

TEST_F(Objects, StreamEvents) {
    const auto& found = objects(
        object("ste", hex("01"), join({STREAM, hex("0002 05 7374617200 04 656E6400")}), hex("00 02 0001 FFFF")));
    ASSERT_EQ(found.at(0).stream->events.size(), 2U);
    EXPECT_EQ(found[0].stream->events[0].name, "star");
    EXPECT_EQ(found[0].stream->events[0].id, 1);
    EXPECT_EQ(found[0].stream->events[1].name, "end");
    EXPECT_EQ(found[0].stream->events[1].id, 65535);
}

TEST_F(Objects, StreamEventsBehindShortMicroseconds) {
    const auto& found =
        objects(object("ste", hex("01"), hex("00 0000005A 01F4 FF 00 01 0001 05 7374617200"), hex("00 01 0007")));
    EXPECT_EQ(found.at(0).stream->microseconds, 500U);
    EXPECT_EQ(found[0].stream->events.at(0).name, "star");
    EXPECT_EQ(found[0].stream->events[0].id, 7);
}

TEST_F(Objects, StreamEventsWithBytesBehindTheNames) {
    const auto& found =
        objects(object("ste", hex("01"), join({STREAM, hex("0001 05 7374617200 AABB")}), hex("00 01 0007")));
    EXPECT_EQ(found.at(0).stream->events.at(0).name, "star");
}

TEST_F(Objects, FewerEventIdsThanNames) {
    const auto& found =
        objects(object("ste", hex("01"), join({STREAM, hex("0002 02 6100 02 6200")}), hex("00 01 0007")));
    ASSERT_EQ(found.at(0).stream->events.size(), 1U);
    EXPECT_EQ(found[0].stream->events[0].name, "a");
    expectRefusal(RefusalKind::EventCount, 0, "2 names and 1 ids of events");
}

TEST_F(Objects, MoreEventIdsThanNames) {
    const auto& found = objects(object("ste", hex("01"), join({STREAM, hex("0000")}), hex("00 01 0007")));
    EXPECT_THAT(found.at(0).stream->events, IsEmpty());
    expectRefusal(RefusalKind::EventCount, 0, "0 names and 1 ids of events");
}

TEST_F(Objects, StreamWithoutRoomForItsFields) {
    EXPECT_THAT(objects(object("str", hex("01"), hex("00 00"), hex("00"))), IsEmpty());
    expectRefusal(RefusalKind::Truncated, 24, "the objectInfo of a stream does not hold what it says");
}

TEST_F(Objects, FullNamesOfKinds) {
    const auto& found =
        objects(join({object("DSM::File", hex("01"), {}, counted32(text("Um"))),
                      object("DSM::Directory", hex("02"), {}, hex("0000")),
                      object("BIOP::StreamEvent", hex("03"), join({STREAM, hex("0000")}), hex("00 00"))}));
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0].kind, ObjectKind::File);
    EXPECT_EQ(found[1].kind, ObjectKind::Directory);
    EXPECT_EQ(found[2].kind, ObjectKind::StreamEvent);
}

TEST_F(Objects, OfUnknownKinds) {
    const auto& found = objects(object("xyz", hex("01"), hex("AABB"), hex("CC")));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].kind, ObjectKind::Unknown);
    EXPECT_THAT(refusals(), IsEmpty());
}

TEST_F(Objects, LittleEndian) {
    const auto& found = objects(hex("42494F50 01 00 01 00 1A000000"
                                    "01 01 04000000 66696C00 0000 00 06000000 02000000 556D"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(contentOf(found[0]), text("Um"));
    EXPECT_EQ(found[0].contentSize, 2U);
}

TEST_F(Objects, WrongMessageSizesAreSaid) {
    ByteVector small = file(hex("01"), text("Um"));
    small[11] = 0x01;
    ByteVector large = file(hex("02"), text("Dois"));
    large[9] = 0x01;
    const auto& found = objects(join({small, large, file(hex("03"), text("Tres"))}));
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(contentOf(found[2]), text("Tres"));
    ASSERT_EQ(refusals().size(), 2U);
    EXPECT_EQ(refusals()[0].kind, RefusalKind::MessageSize);
    EXPECT_EQ(refusals()[0].text, "message_size leads to byte 13, and the message ends at 43");
    EXPECT_EQ(refusals()[1].at, 43U);
}

TEST_F(Objects, ABodyThatDoesNotHoldTogetherCostsItsObjectOnly) {
    const auto& found =
        objects(join({object("fil", hex("01"), {}, hex("00000009 41")), file(hex("02"), text("Dois"))}));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].key, hex("02"));
    expectRefusal(RefusalKind::Truncated, 33, "content takes 9 bytes, and 1 are left");
}

TEST_F(Objects, ALengthBeyondTheModuleEndsThem) {
    ByteVector beyond = file(hex("02"), text("Dois"));
    beyond[13] = 0xFF;
    beyond[12] = 0xFF; // objectKey_length
    const auto& found = objects(join({file(hex("01"), text("Um")), beyond}));
    EXPECT_EQ(found.size(), 1U);
    expectRefusal(RefusalKind::Truncated, 43 + 13, "objectKey takes 255 bytes, and 32 are left");
}

TEST_F(Objects, BytesBehindTheLastAreSaid) {
    const auto& found = objects(join({file(hex("01"), text("Um")), hex("FFFF")}));
    EXPECT_EQ(found.size(), 1U);
    expectRefusal(RefusalKind::ObjectMessage, 43, "no BIOP message begins here");
}

TEST_F(Objects, NoneInAModuleOfOtherBytes) {
    EXPECT_THAT(objects(text("not one of them")), IsEmpty());
    expectRefusal(RefusalKind::ObjectMessage, 0, "no BIOP message begins here");
}

TEST_F(Objects, MoreBindingsThanThereAre) {
    EXPECT_THAT(objects(object("dir", hex("01"), {}, join({hex("FFFF"), binding({"a", "fil", 1, hex("01")})}))),
                IsEmpty());
    ASSERT_EQ(refusals().size(), 1U);
    EXPECT_EQ(refusals()[0].text, "nameComponents_count takes 1 bytes, and 0 are left");
}

/// Whatever is missing or changed, nothing is read that is not there.
TEST(ObjectsOfAnyBytes, EveryPrefixAndEveryChangedByteIsSurvived) {
    const ByteVector module =
        join({directory("srg", hex("01"), {{"a", "fil", 1, hex("02")}, {"b", "ste", 1, hex("03")}}),
              file(hex("02"), text("Um")),
              object("ste", hex("03"), join({STREAM, hex("0001 05 7374617200")}),
                     join({hex("01"), objectTap(1), hex("01 0001")}))});
    for (std::size_t size = 0; size < module.size(); ++size) {
        Given given;
        given.take({gatewaySection(2, 1, hex("01"))});
        send(given, ByteVector(module.begin(), module.begin() + static_cast<std::ptrdiff_t>(size)));
        given.tree();
    }
    for (std::size_t at = 0; at < module.size(); ++at) {
        for (const QUOR_U8 value : hex("00 01 7F 80 FF")) {
            ByteVector changed = module;
            changed[at] = value;
            Given given;
            given.take({gatewaySection(2, 1, hex("01"))});
            send(given, changed);
            given.tree();
        }
    }
}
