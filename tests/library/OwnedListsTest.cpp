// The items in wire order that a class owns, and what all such classes promise.

#include "support/Lifetime.h"
#include "support/TypedRows.h"

#include <array>
#include <limits>
#include <memory>

namespace {

/// A list in an owner that holds nothing else, or in one that was parsed.
template <class Row> class ListOf {
public:
    using Calls = typename Row::Items;
    using Owner = typename Calls::Owner;
    using Item = typename Calls::Item;
    using Position = typename Calls::Key;

    ListOf() : m_owner(new Owner(emptyOne<Owner>())) {}

    /// With an item for each number, which counts the item's destruction.
    template <std::size_t N> explicit ListOf(std::array<int, N>& deleted) : ListOf() { add(deleted); }

    void parse() {
        ASSERT_NE(m_parsed.object, nullptr) << testing::PrintToString(m_parsed.lines);
        m_owner = std::move(m_parsed.object);
        ASSERT_GE(size(), 2U);
    }

    /// Goes on with a copy, if the class has them.
    bool copy() {
        if constexpr (std::is_constructible_v<Owner, Owner*>) {
            m_owner = std::make_unique<Owner>(m_owner.get());
        }
        return std::is_constructible_v<Owner, Owner*>;
    }

    QUOR_U32 size() const { return Calls::size(*m_owner); }
    Item* get(Position position) const { return Calls::get(*m_owner, position); }
    void add(Item* item) { Calls::add(*m_owner, item); }
    template <std::size_t N> void add(std::array<int, N>& deleted) {
        for (int& counter : deleted) {
            add(new Counted<Item>(counter));
        }
    }
    bool remove(Position position) { return Calls::remove(*m_owner, position); }
    void destroy() { m_owner.reset(); }

private:
    Parsed<Owner> m_parsed = parseAny<Owner>(static_cast<const Row&>(classRows()).wire);
    std::unique_ptr<Owner> m_owner;
};

template <class Row> class OwnedLists : public testing::Test {};

TYPED_TEST_SUITE(OwnedLists, RowsOf<Holds::LIST>, OwnerName);

} // namespace

TYPED_TEST(OwnedLists, AddAppends) {
    ListOf<TypeParam> list;
    EXPECT_EQ(list.size(), 0U);
    for (QUOR_U8 i = 0; i < 3; ++i) {
        auto* const item = new typename ListOf<TypeParam>::Item;
        list.add(item);
        EXPECT_EQ(list.size(), i + 1U);
        EXPECT_EQ(list.get(i), item);
    }
    EXPECT_NE(list.get(0), list.get(1));
}

TYPED_TEST(OwnedLists, RemoveDeletesOneItem) {
    std::array<int, 3> deleted = {};
    ListOf<TypeParam> list(deleted);
    auto* const first = list.get(0);
    auto* const last = list.get(2);
    EXPECT_EQ(deleted, (std::array<int, 3>{0, 0, 0}));
    EXPECT_TRUE(list.remove(1));
    EXPECT_EQ(deleted, (std::array<int, 3>{0, 1, 0}));
    EXPECT_EQ(list.size(), 2U);
    EXPECT_EQ(list.get(0), first);
    EXPECT_EQ(list.get(1), last);
    EXPECT_TRUE(list.remove(0));
    EXPECT_EQ(list.get(0), last);
    EXPECT_TRUE(list.remove(0));
    EXPECT_EQ(deleted, (std::array<int, 3>{1, 1, 1}));
    EXPECT_EQ(list.size(), 0U);
    EXPECT_FALSE(list.remove(0));
}

TYPED_TEST(OwnedLists, NothingIsPastTheEnd) {
    using Position = typename ListOf<TypeParam>::Position;
    ListOf<TypeParam> none;
    EXPECT_EQ(none.get(0), nullptr);
    EXPECT_FALSE(none.remove(0));
    std::array<int, 2> deleted = {};
    ListOf<TypeParam> list(deleted);
    for (const Position position : {Position{2}, Position{3}, Position{255}, std::numeric_limits<Position>::max()}) {
        EXPECT_EQ(list.get(position), nullptr);
        EXPECT_FALSE(list.remove(position));
    }
    EXPECT_EQ(list.size(), 2U);
    EXPECT_EQ(deleted, (std::array<int, 2>{0, 0}));
}

TYPED_TEST(OwnedLists, NullTakesAPlaceThatCannotBeRemoved) {
    ListOf<TypeParam> list;
    auto* const item = new typename ListOf<TypeParam>::Item;
    list.add(nullptr);
    list.add(item);
    EXPECT_EQ(list.size(), 2U);
    EXPECT_EQ(list.get(0), nullptr);
    EXPECT_EQ(list.get(1), item);
    EXPECT_FALSE(list.remove(0));
    EXPECT_EQ(list.size(), 2U);
    EXPECT_TRUE(list.remove(1));
    EXPECT_EQ(list.size(), 1U);
}

/// A position of eight bits cannot name the 257th item; a wider one is not cut down to eight.
TYPED_TEST(OwnedLists, PositionsReachAsFarAsTheirType) {
    using Position = typename ListOf<TypeParam>::Position;
    constexpr bool BYTE = std::numeric_limits<Position>::digits == 8;
    constexpr auto LAST = static_cast<Position>(BYTE ? 255 : 256);
    std::array<int, 257> deleted = {};
    ListOf<TypeParam> list(deleted);
    EXPECT_EQ(list.size(), 257U);
    ASSERT_NE(list.get(LAST), nullptr);
    EXPECT_TRUE(list.remove(LAST));
    EXPECT_EQ(deleted[LAST], 1);
    EXPECT_EQ(list.size(), 256U);
    EXPECT_EQ(list.remove(LAST), BYTE);
    EXPECT_EQ(deleted[256], 1);
    EXPECT_FALSE(list.remove(LAST));
    EXPECT_EQ(list.size(), LAST);
}

TYPED_TEST(OwnedLists, DestructorDeletesWhatIsLeft) {
    static_assert(std::has_virtual_destructor_v<typename ListOf<TypeParam>::Owner>,
                  "owners are deleted as what they derive from");
    std::array<int, 3> deleted = {};
    ListOf<TypeParam> list(deleted);
    EXPECT_TRUE(list.remove(2));
    list.destroy();
    EXPECT_EQ(deleted, (std::array<int, 3>{1, 1, 1}));
}

TYPED_TEST(OwnedLists, OwnersMayLieOnTheStack) {
    using Calls = typename TypeParam::Items;
    std::array<int, 2> deleted = {};
    {
        auto owner = emptyOne<typename Calls::Owner>();
        for (int& counter : deleted) {
            Calls::add(owner, new Counted<typename Calls::Item>(counter));
        }
        EXPECT_TRUE(Calls::remove(owner, 0));
        EXPECT_EQ(deleted, (std::array<int, 2>{1, 0}));
    }
    EXPECT_EQ(deleted, (std::array<int, 2>{1, 1}));
}

TYPED_TEST(OwnedLists, ParsedItemsAreRemovedOneByOne) {
    std::array<int, 1> deleted = {};
    ListOf<TypeParam> list;
    list.parse();
    for (QUOR_U32 left = list.size(); left > 0; --left) {
        auto* const second = list.get(1);
        EXPECT_TRUE(list.remove(0));
        EXPECT_EQ(list.size(), left - 1);
        EXPECT_EQ(list.get(0), second);
    }
    EXPECT_FALSE(list.remove(0));
    list.add(deleted);
    EXPECT_EQ(list.size(), 1U);
    list.destroy();
    EXPECT_EQ(deleted, (std::array<int, 1>{1}));
}

TYPED_TEST(OwnedLists, AddedItemsFollowParsedOnes) {
    using Position = typename ListOf<TypeParam>::Position;
    std::array<int, 3> deleted = {};
    ListOf<TypeParam> list;
    list.parse();
    auto* const second = list.get(1);
    const auto end = static_cast<Position>(list.size());
    list.add(deleted);
    ASSERT_EQ(list.size(), end + 3U);
    auto* const added = list.get(end);
    EXPECT_TRUE(list.remove(0)); // a parsed one
    EXPECT_EQ(list.get(0), second);
    EXPECT_EQ(list.get(static_cast<Position>(end - 1)), added);
    EXPECT_EQ(deleted, (std::array<int, 3>{0, 0, 0}));
    EXPECT_TRUE(list.remove(end)); // the second one added
    EXPECT_EQ(deleted, (std::array<int, 3>{0, 1, 0}));
    EXPECT_EQ(list.size(), end + 1U);
    list.destroy();
    EXPECT_EQ(deleted, (std::array<int, 3>{1, 1, 1}));
}

TYPED_TEST(OwnedLists, CopiesOfParsedOwnersOwnTheirItems) {
    std::array<int, 1> deleted = {};
    ListOf<TypeParam> list;
    list.parse();
    const QUOR_U32 size = list.size();
    if (list.copy()) {
        list.add(deleted);
        EXPECT_EQ(list.size(), size + 1);
        EXPECT_TRUE(list.remove(0));
        EXPECT_TRUE(list.remove(static_cast<typename ListOf<TypeParam>::Position>(size - 1)));
        EXPECT_EQ(deleted, (std::array<int, 1>{1}));
    }
}
