// The items of tables and descriptors, given any number of bytes and none.

#include "hostile/Tables.h"
#include "support/TypedRows.h"

#include <gmock/gmock.h>

using Quor::TISDBTTable;

namespace {

/// What a caller sees of an item's parse.
struct Verdict {
    bool taken;
    QUOR_U16 error;
    QUOR_U32 length;
    std::size_t lines;
};

struct ItemClass {
    std::string name;
    QUOR_U32 minimum; ///< fewest bytes of an item
    Verdict (*parse)(QUOR_U8* data, QUOR_U32 length);
};

void PrintTo(const ItemClass& item, std::ostream* out) {
    *out << item.name;
}

template <class Parse> Verdict judge(Parse parse) {
    Verdict verdict{false, PRESET_ERROR, PRESET_LENGTH, 0};
    const LogCapture log;
    verdict.taken =
        std::unique_ptr<typename std::remove_pointer<decltype(parse(verdict))>::type>(parse(verdict)) != nullptr;
    verdict.lines = log.records().size();
    return verdict;
}

template <class Item> ItemClass item(QUOR_U32 minimum) {
    return {nameOf<Item>(), minimum, [](QUOR_U8* data, QUOR_U32 length) {
                return judge([=](Verdict& verdict) {
                    if constexpr (IS_ENTRY<Item>) {
                        return Item::parse(data, length, 1, &verdict.length, &verdict.error);
                    } else {
                        return Item::parse(data, length, &verdict.length, &verdict.error);
                    }
                });
            }};
}

template <class T> void add(std::vector<ItemClass>& classes, const ItemRow<T>& row) {
    classes.push_back(item<T>(row.minimum));
}

template <class Row> void add(std::vector<ItemClass>& classes, const Row& row) {
    if constexpr (Row::Items::HOLDS != Holds::NOTHING) {
        using Item = typename Row::Items::Item;
        if constexpr (!std::is_same_v<Item, Quor::TProgramAssociation>) { // which its table parses
            classes.push_back(item<Item>(row.items.minimum));
        }
    }
}

std::vector<ItemClass> itemClasses() {
    std::vector<ItemClass> classes;
    forEachRow(classRows(), [&](const auto& row) { add(classes, row); });
    return classes;
}

class Items : public testing::TestWithParam<ItemClass> {
protected:
    static void expectRefused(const Verdict& verdict) {
        EXPECT_FALSE(verdict.taken);
        EXPECT_THAT(verdict.error,
                    testing::AnyOf(TISDBTTable::ERROR_INVALID_DATA, TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                   TISDBTTable::ERROR_INVALID_DESCRIPTOR_TAG,
                                   TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, TISDBTTable::ERROR_INVALID_STRING,
                                   TISDBTTable::ERROR_INVALID_ITEM));
        EXPECT_EQ(verdict.length, PRESET_LENGTH);
        EXPECT_GT(verdict.lines, 0U);
    }

    /// TApplication trusts its caller for the nine fixed bytes once there are six.
    static bool mayNotBeGiven(QUOR_U32 size) { return GetParam().name == "TApplication" && size >= 6 && size < 9; }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Each, Items, testing::ValuesIn(itemClasses()), caseName<ItemClass>);

TEST_P(Items, ShorterThanTheirFields) {
    for (QUOR_U32 size = 0; size < GetParam().minimum; ++size) {
        for (const QUOR_U8 value : hex("00 01 7F 80 FF")) {
            if (!mayNotBeGiven(size)) {
                SCOPED_TRACE(std::to_string(size) + " bytes of " + std::to_string(value));
                const HeapBytes bytes(fill(size, value));
                expectRefused(GetParam().parse(bytes.data(), bytes.size()));
            }
        }
    }
}

TEST_P(Items, OfAnySize) {
    for (QUOR_U32 size = GetParam().minimum; size < 300; ++size) {
        for (const ByteVector& wire : {fill(size, 0x00), fill(size, 0x01), fill(size, 0x7F), fill(size, 0x80),
                                       fill(size, 0xFF), counting(size)}) {
            SCOPED_TRACE(std::to_string(size) + " bytes, the last " + std::to_string(wire.back()));
            const HeapBytes bytes(wire);
            const Verdict verdict = GetParam().parse(bytes.data(), bytes.size());
            if (verdict.taken) {
                EXPECT_EQ(verdict.error, TISDBTTable::ERROR_OK);
                EXPECT_LE(verdict.length, size);
            } else {
                expectRefused(verdict);
            }
        }
    }
}

TEST_P(Items, OfNoDataWhateverTheirLength) {
    for (const QUOR_U32 size : {0U, 1U}) {
        SCOPED_TRACE(size);
        expectRefused(GetParam().parse(nullptr, size));
    }
}
