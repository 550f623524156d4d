// The items in wire order that a class owns, and what all such classes promise.

#include "support/Classes.h"
#include "support/Lifetime.h"

#include <array>
#include <limits>
#include <memory>

namespace {

template <class Row> class OwnedLists : public testing::Test {
protected:
    using List = typename Row::Items;
    using Owner = typename List::Owner;
    using Item = typename List::Item;
    using Key = typename List::Key;

    OwnedLists() : m_owner(new Owner(emptyOne<Owner>())) {}

    /// From here on, the list of an object that was parsed.
    void parse() {
        m_parsed = std::make_unique<Parsed<Owner>>(parseAny<Owner>(std::get<Row>(classRows()).wire));
        ASSERT_NE(m_parsed->object, nullptr) << testing::PrintToString(m_parsed->lines);
        m_owner = std::move(m_parsed->object);
        ASSERT_GE(size(), 2U);
    }

    /// Adds an item for each number, which counts the item's destruction.
    template <std::size_t N> void addCounted(std::array<int, N>& deleted) {
        for (int& counter : deleted) {
            add(new Counted<Item>(counter));
        }
    }

    QUOR_U32 size() const { return List::size(*m_owner); }
    Item* get(Key position) const { return List::get(*m_owner, position); }
    void add(Item* item) { List::add(*m_owner, item); }
    bool remove(Key position) { return List::remove(*m_owner, position); }
    void destroy() { m_owner.reset(); }

    std::unique_ptr<Parsed<Owner>> m_parsed;
    std::unique_ptr<Owner> m_owner;
};

TYPED_TEST_SUITE(OwnedLists, RowsOf<Holds::LIST>, OwnerName);

} // namespace

TYPED_TEST(OwnedLists, AddAppends) {
    EXPECT_EQ(this->size(), 0U);
    for (QUOR_U8 i = 0; i < 3; ++i) {
        auto* const item = new typename TestFixture::Item;
        this->add(item);
        EXPECT_EQ(this->size(), i + 1U);
        EXPECT_EQ(this->get(i), item);
    }
    EXPECT_NE(this->get(0), this->get(1));
}

TYPED_TEST(OwnedLists, RemoveDeletesOneItem) {
    std::array<int, 3> deleted = {};
    this->addCounted(deleted);
    auto* const first = this->get(0);
    auto* const last = this->get(2);
    EXPECT_EQ(deleted, (std::array<int, 3>{0, 0, 0}));
    EXPECT_TRUE(this->remove(1));
    EXPECT_EQ(deleted, (std::array<int, 3>{0, 1, 0}));
    EXPECT_EQ(this->size(), 2U);
    EXPECT_EQ(this->get(0), first);
    EXPECT_EQ(this->get(1), last);
    EXPECT_TRUE(this->remove(0));
    EXPECT_EQ(this->get(0), last);
    EXPECT_TRUE(this->remove(0));
    EXPECT_EQ(deleted, (std::array<int, 3>{1, 1, 1}));
    EXPECT_EQ(this->size(), 0U);
    EXPECT_FALSE(this->remove(0));
}

TYPED_TEST(OwnedLists, NothingIsPastTheEnd) {
    using Position = typename TestFixture::Key;
    EXPECT_EQ(this->get(0), nullptr);
    EXPECT_FALSE(this->remove(0));
    std::array<int, 2> deleted = {};
    this->addCounted(deleted);
    for (const Position position : {Position{2}, Position{3}, Position{255}, std::numeric_limits<Position>::max()}) {
        EXPECT_EQ(this->get(position), nullptr);
        EXPECT_FALSE(this->remove(position));
    }
    EXPECT_EQ(this->size(), 2U);
    EXPECT_EQ(deleted, (std::array<int, 2>{0, 0}));
}

TYPED_TEST(OwnedLists, NullTakesAPlaceThatCannotBeRemoved) {
    auto* const item = new typename TestFixture::Item;
    this->add(nullptr);
    this->add(item);
    EXPECT_EQ(this->size(), 2U);
    EXPECT_EQ(this->get(0), nullptr);
    EXPECT_EQ(this->get(1), item);
    EXPECT_FALSE(this->remove(0));
    EXPECT_EQ(this->size(), 2U);
    EXPECT_TRUE(this->remove(1));
    EXPECT_EQ(this->size(), 1U);
}

/// A position of eight bits cannot name the 257th item; a wider one is not cut down to eight.
TYPED_TEST(OwnedLists, PositionsReachAsFarAsTheirType) {
    using Position = typename TestFixture::Key;
    constexpr bool BYTE = std::numeric_limits<Position>::digits == 8;
    constexpr auto LAST = static_cast<Position>(BYTE ? 255 : 256);
    std::array<int, 257> deleted = {};
    this->addCounted(deleted);
    EXPECT_EQ(this->size(), 257U);
    ASSERT_NE(this->get(LAST), nullptr);
    EXPECT_TRUE(this->remove(LAST));
    EXPECT_EQ(deleted[LAST], 1);
    EXPECT_EQ(this->size(), 256U);
    EXPECT_EQ(this->remove(LAST), BYTE);
    EXPECT_EQ(deleted[256], 1);
    EXPECT_FALSE(this->remove(LAST));
    EXPECT_EQ(this->size(), LAST);
}

TYPED_TEST(OwnedLists, DestructorDeletesWhatIsLeft) {
    static_assert(std::has_virtual_destructor_v<typename TestFixture::Owner>,
                  "owners are deleted as what they derive from");
    std::array<int, 3> deleted = {};
    this->addCounted(deleted);
    EXPECT_TRUE(this->remove(2));
    this->destroy();
    EXPECT_EQ(deleted, (std::array<int, 3>{1, 1, 1}));
}

TYPED_TEST(OwnedLists, OwnersMayLieOnTheStack) {
    std::array<int, 2> deleted = {};
    {
        auto owner = emptyOne<typename TestFixture::Owner>();
        for (int& counter : deleted) {
            TestFixture::List::add(owner, new Counted<typename TestFixture::Item>(counter));
        }
        EXPECT_TRUE(TestFixture::List::remove(owner, 0));
        EXPECT_EQ(deleted, (std::array<int, 2>{1, 0}));
    }
    EXPECT_EQ(deleted, (std::array<int, 2>{1, 1}));
}

TYPED_TEST(OwnedLists, ParsedItemsAreRemovedOneByOne) {
    this->parse();
    for (QUOR_U32 left = this->size(); left > 0; --left) {
        auto* const second = this->get(1);
        EXPECT_TRUE(this->remove(0));
        EXPECT_EQ(this->size(), left - 1);
        EXPECT_EQ(this->get(0), second);
    }
    EXPECT_FALSE(this->remove(0));
    std::array<int, 1> deleted = {};
    this->addCounted(deleted);
    EXPECT_EQ(this->size(), 1U);
    this->destroy();
    EXPECT_EQ(deleted, (std::array<int, 1>{1}));
}

TYPED_TEST(OwnedLists, AddedItemsFollowParsedOnes) {
    using Position = typename TestFixture::Key;
    this->parse();
    auto* const second = this->get(1);
    const auto end = static_cast<Position>(this->size());
    std::array<int, 3> deleted = {};
    this->addCounted(deleted);
    ASSERT_EQ(this->size(), end + 3U);
    auto* const added = this->get(end);
    EXPECT_TRUE(this->remove(0)); // a parsed one
    EXPECT_EQ(this->get(0), second);
    EXPECT_EQ(this->get(static_cast<Position>(end - 1)), added);
    EXPECT_EQ(deleted, (std::array<int, 3>{0, 0, 0}));
    EXPECT_TRUE(this->remove(end)); // the second one added
    EXPECT_EQ(deleted, (std::array<int, 3>{0, 1, 0}));
    EXPECT_EQ(this->size(), end + 1U);
    this->destroy();
    EXPECT_EQ(deleted, (std::array<int, 3>{1, 1, 1}));
}

TYPED_TEST(OwnedLists, CopiesOfParsedOwnersOwnTheirItems) {
    if constexpr (std::is_constructible_v<typename TestFixture::Owner, typename TestFixture::Owner*>) {
        this->parse();
        typename TestFixture::Owner copy(this->m_owner.get());
        const QUOR_U32 count = this->size();
        this->destroy();
        std::array<int, 1> deleted = {};
        TestFixture::List::add(copy, new Counted<typename TestFixture::Item>(deleted[0]));
        EXPECT_EQ(TestFixture::List::size(copy), count + 1);
        EXPECT_TRUE(TestFixture::List::remove(copy, 0));
        EXPECT_TRUE(TestFixture::List::remove(copy, static_cast<typename TestFixture::Key>(count - 1)));
        EXPECT_EQ(deleted, (std::array<int, 1>{1}));
    }
}
