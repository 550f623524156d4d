#include "Given.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace wire;
using dsmcc::EntryState;
using dsmcc::Naming;
using dsmcc::ObjectKind;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const ByteVector ROOT = hex("01");

std::vector<std::string> pathsOf(const dsmcc::Tree& tree) {
    std::vector<std::string> paths;
    for (const dsmcc::Entry& each : tree.entries) {
        paths.push_back(each.path);
    }
    return paths;
}

/// An object carousel whose modules, from 1 on, are all there.
class Tree : public testing::Test {
protected:
    void send(const std::vector<ByteVector>& modules, bool withDsi = true) {
        if (withDsi) {
            given.take({gatewaySection(2, 1, ROOT)});
        }
        std::vector<Announced> announced;
        for (const ByteVector& each : modules) {
            announced.push_back({static_cast<unsigned>(announced.size() + 1), each.size()});
        }
        given.take({objectDii({2, 4066}, announced)});
        for (std::size_t at = 0; at < modules.size(); ++at) {
            given.take(blocks({static_cast<unsigned>(at + 1)}, 4066, modules[at]));
        }
    }

    /// What a root with one binding leads to.
    dsmcc::Entry entryOf(const Bound& bound) {
        send({join({directory("srg", ROOT, {bound}), file(hex("05"), text("Um"))})});
        const auto tree = given.tree();
        EXPECT_FALSE(tree.entries.empty());
        return tree.entries.empty() ? dsmcc::Entry{} : tree.entries[0];
    }

    Given given;
};

class Names : public Tree {
protected:
    Naming namingOf(const std::string& name) { return entryOf({name, "fil", 1, hex("05")}).naming; }
};

} // namespace

TEST_F(Tree, OfFilesAndDirectoriesInTheirOrder) {
    send({directory("srg", ROOT,
                    {{"main.ncl", "fil", 2, hex("05")}, {"media", "dir", 2, hex("06")}, {"z", "fil", 2, hex("07")}}),
          join({file(hex("05"), text("<ncl/>")), directory("dir", hex("06"), {{"logo.png", "fil", 2, hex("08")}}),
                file(hex("07"), {}), file(hex("08"), text("PNG"))})});
    const auto tree = given.tree();
    EXPECT_THAT(pathsOf(tree), ElementsAre("main.ncl", "media", "media/logo.png", "z"));
    EXPECT_EQ(tree.gateway->state, EntryState::Complete);
    EXPECT_EQ(tree.gateway->moduleId, 1);
    EXPECT_EQ(tree.gateway->path, "");
    EXPECT_EQ(tree.entries[0].kind, ObjectKind::File);
    EXPECT_EQ(tree.entries[0].naming, Naming::Good);
    EXPECT_EQ(tree.entries[0].size, 6U);
    EXPECT_EQ(tree.entries[0].moduleId, 2);
    EXPECT_EQ(tree.entries[0].objectKey, hex("05"));
    EXPECT_EQ(bytesOf(tree.entries[0].content()), text("<ncl/>"));
    EXPECT_EQ(tree.entries[1].kind, ObjectKind::Directory);
    EXPECT_EQ(tree.entries[1].content().size, 0U);
    EXPECT_EQ(bytesOf(tree.entries[2].content()), text("PNG"));
    EXPECT_EQ(tree.entries[3].state, EntryState::Complete);
    EXPECT_EQ(tree.entries[3].content().size, 0U);
    EXPECT_FALSE(tree.refusal);
}

TEST_F(Tree, WithoutADsiFromTheOneGateway) {
    send({directory("srg", hex("09"), {{"a", "fil", 1, hex("05")}})}, false);
    ASSERT_TRUE(given.tree().gateway);
    EXPECT_EQ(given.tree().gateway->objectKey, hex("09"));
    EXPECT_THAT(pathsOf(given.tree()), ElementsAre("a"));
}

TEST_F(Tree, WithoutADsiAndWithTwoGatewaysHasNoRoot) {
    send({join({directory("srg", hex("09"), {}), directory("srg", hex("0A"), {})})}, false);
    EXPECT_FALSE(given.tree().gateway);
    EXPECT_EQ(given.tree().entries.size(), 2U);
    EXPECT_EQ(given.tree().entries[0].naming, Naming::None);
}

TEST_F(Tree, WhereTheDsiNamesNoDirectory) {
    send({file(ROOT, text("Um"))});
    EXPECT_EQ(given.tree().gateway->state, EntryState::NoSuchObject);
    EXPECT_EQ(given.tree().gateway->kind, ObjectKind::ServiceGateway);
    EXPECT_EQ(given.tree().entries.at(0).naming, Naming::None);
}

TEST_F(Tree, WhereTheDsiNamesNothingFromTheOneGateway) {
    send({directory("srg", hex("09"), {{"a", "fil", 1, hex("05")}})});
    EXPECT_EQ(given.tree().gateway->objectKey, hex("09"));
    EXPECT_EQ(given.tree().gateway->state, EntryState::Complete);
}

TEST_F(Tree, BeforeTheModuleOfTheGateway) {
    given.take({gatewaySection(2, 1, ROOT)});
    EXPECT_EQ(given.tree().gateway->state, EntryState::ModuleNotAnnounced);
    EXPECT_EQ(given.tree().gateway->module, nullptr);
    given.take({objectDii({}, {{1, 100}})});
    EXPECT_EQ(given.tree().gateway->state, EntryState::ModuleIncomplete);
    EXPECT_EQ(given.tree().gateway->module->received(), 0U);
    EXPECT_THAT(given.tree().entries, IsEmpty());
}

TEST_F(Tree, FileOfAModuleThatIsIncomplete) {
    given.take({gatewaySection(2, 1, ROOT), objectDii({2, 4066}, {{1, 100}, {2, 100}})});
    const ByteVector info = hex("0008 0000000000000123");
    ByteVector bound = binding({"a", "fil", 2, hex("05")});
    bound.resize(bound.size() - 2);
    const ByteVector root = object("srg", ROOT, {}, join({hex("0001"), bound, info}));
    given.take({objectDii({2, 4066, 0x80010002}, {{1, root.size()}, {2, 100}}), block({}, root)});
    const auto entry = given.tree().entries.at(0);
    EXPECT_EQ(entry.state, EntryState::ModuleIncomplete);
    EXPECT_EQ(entry.kind, ObjectKind::File);
    EXPECT_EQ(entry.size, 0x123U); // as the directory has it
    EXPECT_EQ(entry.content().size, 0U);
    EXPECT_EQ(entry.module->id, 2);
    EXPECT_EQ(entry.object, nullptr);
}

TEST_F(Tree, FileOfAModuleThatDoesNotInflate) {
    const ByteVector root = directory("srg", ROOT, {{"a", "fil", 2, hex("05")}});
    given.take({gatewaySection(2, 1, ROOT),
                objectDii({2, 4066}, {{1, root.size()}, {2, 3, 1, hex("09 05 78 00000100")}}), block({}, root),
                block({2}, hex("AABBCC"))});
    EXPECT_EQ(given.tree().entries.at(0).state, EntryState::ModuleRefused);
}

TEST_F(Tree, DanglingKey) {
    EXPECT_EQ(entryOf({"a", "fil", 1, hex("0005")}).state, EntryState::NoSuchObject);
    EXPECT_EQ(given.tree().entries[0].content().size, 0U);
}

TEST_F(Tree, DanglingModule) {
    EXPECT_EQ(entryOf({"a", "fil", 9, hex("05")}).state, EntryState::ModuleNotAnnounced);
    EXPECT_EQ(given.tree().entries[0].moduleId, 9);
}

TEST_F(Tree, ObjectOfAnotherCarousel) {
    EXPECT_EQ(entryOf({"a", "fil", 1, hex("05"), 3}).state, EntryState::OtherCarousel);
    EXPECT_EQ(given.tree().entries[0].object, nullptr);
}

TEST_F(Tree, ObjectOfAnotherService) {
    const ByteVector service = join({hex("49534F46"), counted32(join({counted8(fill(20, 0x11)), u32(0), u32(0)}))});
    const ByteVector reference =
        join({hex("00000004 66696C00"), u32(1), hex("49534F05"), counted32(join({hex("00 01"), service}))});
    send({object("srg", ROOT, {}, join({hex("0001 01 02 6100 04 66696C00 01"), reference, hex("0000")}))});
    EXPECT_EQ(given.tree().entries.at(0).state, EntryState::OtherCarousel);
}

TEST_F(Tree, ObjectOfAnUnknownKind) {
    send({join({directory("srg", ROOT, {{"a", "xyz", 1, hex("05")}}), object("xyz", hex("05"), {}, hex("AA"))})});
    EXPECT_EQ(given.tree().entries.at(0).state, EntryState::UnknownKind);
}

TEST_F(Tree, DirectoryThatContainsItself) {
    send({join({directory("srg", ROOT, {{"a", "dir", 1, hex("05")}}),
                directory("dir", hex("05"), {{"a", "dir", 1, hex("05")}})})});
    EXPECT_THAT(pathsOf(given.tree()), ElementsAre("a", "a/a"));
    EXPECT_EQ(given.tree().entries[0].state, EntryState::Complete);
    EXPECT_EQ(given.tree().entries[1].state, EntryState::Loop);
}

TEST_F(Tree, LoopOverTheGateway) {
    send({join({directory("srg", ROOT, {{"a", "dir", 1, hex("05")}}),
                directory("dir", hex("05"), {{"up", "srg", 1, ROOT}})})});
    EXPECT_EQ(given.tree().entries.at(1).state, EntryState::Loop);
}

TEST_F(Tree, DirectoryWithTwoNames) {
    send({join({directory("srg", ROOT, {{"a", "dir", 1, hex("05")}, {"b", "dir", 1, hex("05")}}),
                directory("dir", hex("05"), {{"f", "fil", 1, hex("06")}}), file(hex("06"), text("Um"))})});
    EXPECT_THAT(pathsOf(given.tree()), ElementsAre("a", "a/f", "b", "b/f"));
    EXPECT_EQ(given.tree().entries[3].state, EntryState::Complete);
}

TEST_F(Tree, ObjectsThatNoDirectoryNamesComeLast) {
    send({join(
        {file(hex("07"), text("Um")), directory("srg", ROOT, {{"a", "fil", 1, hex("08")}}), file(hex("08"), {})})});
    const auto tree = given.tree();
    ASSERT_EQ(tree.entries.size(), 2U);
    EXPECT_EQ(tree.entries[1].path, "");
    EXPECT_EQ(tree.entries[1].naming, Naming::None);
    EXPECT_EQ(tree.entries[1].objectKey, hex("07"));
    EXPECT_EQ(bytesOf(tree.entries[1].content()), text("Um"));
}

TEST_F(Tree, TwoObjectsOfOneKey) {
    send({join({directory("srg", ROOT, {{"a", "fil", 1, hex("05")}}), file(hex("05"), text("Um")),
                file(hex("05"), text("Dois"))})});
    const auto tree = given.tree();
    EXPECT_EQ(bytesOf(tree.entries.at(0).content()), text("Um"));
    EXPECT_EQ(tree.entries.at(1).naming, Naming::None);
    ASSERT_EQ(given.module(1).refusals.size(), 1U);
    EXPECT_EQ(given.module(1).refusals[0].kind, dsmcc::RefusalKind::ObjectKey);
    EXPECT_EQ(given.module(1).refusals[0].text, "another object before has the key 05");
}

TEST_F(Tree, TwoObjectsOfOneName) {
    send({join(
        {directory("srg", ROOT, {{"a", "fil", 1, hex("05")}, {"A", "fil", 1, hex("05")}, {"a", "dir", 1, hex("06")}}),
         file(hex("05"), text("Um")), directory("dir", hex("06"), {{"b", "fil", 1, hex("05")}})})});
    const auto tree = given.tree();
    EXPECT_THAT(pathsOf(tree), ElementsAre("a", "A", "a", "a/b"));
    EXPECT_EQ(tree.entries[0].naming, Naming::Good);
    EXPECT_EQ(tree.entries[1].naming, Naming::Good);
    EXPECT_EQ(tree.entries[2].naming, Naming::Duplicate);
    EXPECT_EQ(tree.entries[3].naming, Naming::Duplicate); // it would lie in the first
}

TEST_F(Names, OfUsualFiles) {
    EXPECT_EQ(namingOf("main.ncl"), Naming::Good);
}

TEST_F(Names, InAnyCharacterSet) {
    EXPECT_EQ(namingOf("a\xE7\xE3o.lua"), Naming::Good);
    EXPECT_EQ(given.tree().entries[0].path, "a\xE7\xE3o.lua");
}

TEST_F(Names, OutOfTheFolder) {
    EXPECT_EQ(namingOf("../../etc/passwd"), Naming::Unsafe);
    EXPECT_EQ(bytesOf(given.tree().entries[0].content()), text("Um")); // it can be looked at nevertheless
}

TEST_F(Names, OfTheFolderAbove) {
    EXPECT_EQ(namingOf(".."), Naming::Unsafe);
}

TEST_F(Names, OfTheFolderItself) {
    EXPECT_EQ(namingOf("."), Naming::Unsafe);
}

TEST_F(Names, Absolute) {
    EXPECT_EQ(namingOf("/etc/passwd"), Naming::Unsafe);
}

TEST_F(Names, WithAFolder) {
    EXPECT_EQ(namingOf("a/b.txt"), Naming::Unsafe);
}

TEST_F(Names, WithABackslash) {
    EXPECT_EQ(namingOf("..\\a"), Naming::Unsafe);
}

TEST_F(Names, WithADrive) {
    EXPECT_EQ(namingOf("C:a"), Naming::Unsafe);
}

TEST_F(Names, WithAControlCharacter) {
    EXPECT_EQ(namingOf("a\x1B[2J"), Naming::Unsafe);
}

TEST_F(Names, WithADelete) {
    EXPECT_EQ(namingOf("a\x7F"), Naming::Unsafe);
}

TEST_F(Names, WithANulInside) {
    EXPECT_EQ(namingOf(std::string("a\0b", 3)), Naming::Unsafe);
    EXPECT_EQ(given.tree().entries[0].path, std::string("a\0b", 3));
}

TEST_F(Names, Empty) {
    EXPECT_EQ(namingOf(""), Naming::Unsafe);
}

TEST_F(Names, OfNoComponent) {
    send({object("srg", ROOT, {}, join({hex("0001 00 01"), ior("fil", 2, 1, hex("05")), hex("0000")}))});
    EXPECT_EQ(given.tree().entries.at(0).naming, Naming::Unsafe);
}

TEST_F(Names, OfTheGreatestLength) {
    EXPECT_EQ(namingOf(std::string(254, 'n')), Naming::Good);
}

TEST_F(Names, BelowAnUnsafeOne) {
    send({join({directory("srg", ROOT, {{"..", "dir", 1, hex("05")}}),
                directory("dir", hex("05"), {{"f", "fil", 1, hex("06")}}), file(hex("06"), text("Um"))})});
    EXPECT_EQ(given.tree().entries.at(1).path, "../f");
    EXPECT_EQ(given.tree().entries.at(1).naming, Naming::Unsafe);
}

TEST(TreeOfModules, HasTheirNames) {
    Given given;
    given.take({dataDii({}, {{0, 2, 1, hex("02 01 61")},
                             {1, 2, 1, hex("02 01 61")},
                             {2, 2, 1, hex("02 03 782F79")},
                             {3, 2, 1, hex("02 04 2E2E2F79")},
                             {4, 2, 1, {}},
                             {5, 99, 1, hex("02 01 62")}}),
                block({0, 0}, text("Um"))});
    const auto tree = given.tree();
    EXPECT_THAT(pathsOf(tree), ElementsAre("a", "a", "x/y", "../y", "", "b"));
    EXPECT_FALSE(tree.gateway);
    EXPECT_EQ(tree.entries[0].kind, ObjectKind::Module);
    EXPECT_EQ(bytesOf(tree.entries[0].content()), text("Um"));
    EXPECT_EQ(tree.entries[0].size, 2U);
    EXPECT_EQ(tree.entries[0].naming, Naming::Good);
    EXPECT_EQ(tree.entries[1].naming, Naming::Duplicate);
    EXPECT_EQ(tree.entries[1].state, EntryState::ModuleIncomplete);
    EXPECT_EQ(tree.entries[2].naming, Naming::Good);
    EXPECT_EQ(tree.entries[3].naming, Naming::Unsafe);
    EXPECT_EQ(tree.entries[4].naming, Naming::None);
    EXPECT_EQ(tree.entries[5].size, 99U);
}

TEST(TreeOfModules, OfNothingButBlocksIsEmpty) {
    Given given;
    given.take({block({0, 0}, text("Um"))});
    EXPECT_THAT(given.tree().entries, IsEmpty());
}
