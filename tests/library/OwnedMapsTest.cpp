// The items by a key that a class owns, and what all such classes promise.

#include "support/Lifetime.h"
#include "support/TypedRows.h"

#include <gmock/gmock.h>

#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A map in an owner that holds nothing else, or in one that was parsed.
template <class Row> class MapOf {
public:
    using Calls = typename Row::Items;
    using Owner = typename Calls::Owner;
    using Item = typename Calls::Item;
    using Key = typename Calls::Key;

    MapOf() : m_owner(new Owner(emptyOne<Owner>())) {}

    void parse() {
        ASSERT_NE(m_parsed.object, nullptr) << testing::PrintToString(m_parsed.lines);
        m_owner = std::move(m_parsed.object);
        for (const Key& key : {higher, lower, counted}) {
            ASSERT_NE(get(key), nullptr);
        }
    }

    /// Goes on with a copy, if the class has them.
    bool copy() {
        if constexpr (std::is_constructible_v<Owner, Owner*>) {
            m_owner = std::make_unique<Owner>(m_owner.get());
        }
        return std::is_constructible_v<Owner, Owner*>;
    }

    QUOR_U32 size() const { return Calls::size(*m_owner); }
    Item* get(const Key& key) const { return Calls::get(*m_owner, key); }
    void add(Item* item) { Calls::add(*m_owner, item); }
    bool remove(const Key& key) { return Calls::remove(*m_owner, key); }
    std::vector<Key> keys() const { return Calls::keys(*m_owner); }
    std::list<Key>* newKeys() const { return Calls::list(*m_owner); }
    void destroy() { m_owner.reset(); }

    /// A new item like the first one, or the second one, that the row's bytes hold.
    static Item* newItem(std::size_t index) {
        const Row row = classRows();
        const QUOR_U32 size = row.items.minimum;
        const auto begin = row.wire.begin() + static_cast<std::ptrdiff_t>(row.items.begin + index * size);
        const ByteVector wire(begin, begin + static_cast<std::ptrdiff_t>(size));
        if constexpr (std::is_same_v<Item, Quor::TProgramAssociation>) { // which its table parses
            return new Item(static_cast<QUOR_U16>(wire[0] << 8 | wire[1]), 0x100);
        } else {
            return parseAny<Item>(wire).object.release();
        }
    }

    /// A new item that counts its destructions: like the first one, or of the empty key.
    static Item* newCounted(int& deleted) {
        const std::unique_ptr<Item> first(newItem(0));
        if constexpr (std::is_same_v<Item, Quor::TProgramAssociation>) {
            return new Counted<Item>(deleted, first->getProgramNumber(), first->getProgramMapPid());
        } else if constexpr (std::is_constructible_v<Item, Item*>) {
            return new Counted<Item>(deleted, first.get());
        } else if constexpr (std::is_constructible_v<Item, Item*, int>) {
            return new Counted<Item>(deleted, first.get(), 0);
        } else {
            return new Counted<Item>(deleted);
        }
    }

    /// The key of an item, which is deleted.
    static Key keyOf(Item* item) {
        auto owner = emptyOne<Owner>();
        Calls::add(owner, item);
        return Calls::keys(owner).at(0);
    }

    const Key higher = keyOf(newItem(0));
    const Key lower = keyOf(newItem(1));
    const Key counted = keyOf(newCounted(m_ignored));

private:
    static inline int m_ignored = 0;
    Parsed<Owner> m_parsed = parseAny<Owner>(static_cast<const Row&>(classRows()).wire);
    std::unique_ptr<Owner> m_owner;
};

template <class Row> class OwnedMaps : public testing::Test {};

TYPED_TEST_SUITE(OwnedMaps, RowsOf<Holds::MAP>, OwnerName);

} // namespace

TYPED_TEST(OwnedMaps, AddStoresUnderTheKeyOfTheItem) {
    MapOf<TypeParam> map;
    EXPECT_EQ(map.size(), 0U);
    EXPECT_THAT(map.keys(), IsEmpty());
    auto* const higher = map.newItem(0);
    map.add(higher);
    EXPECT_EQ(map.size(), 1U);
    EXPECT_EQ(map.get(map.higher), higher);
    EXPECT_EQ(map.get(map.lower), nullptr);
    auto* const lower = map.newItem(1);
    map.add(lower);
    EXPECT_EQ(map.size(), 2U);
    EXPECT_EQ(map.get(map.higher), higher);
    EXPECT_EQ(map.get(map.lower), lower);
    EXPECT_THAT(map.keys(), ElementsAre(map.lower, map.higher));
}

TYPED_TEST(OwnedMaps, AddDisplacesWithoutDeleting) {
    using Held = std::unique_ptr<typename MapOf<TypeParam>::Item>;
    int outlivingDeleted = 0;
    int displacedDeleted = 0;
    int deleted = 0;
    MapOf<TypeParam> map;
    const Held outliving(map.newCounted(outlivingDeleted));
    Held displaced(map.newCounted(displacedDeleted));
    auto* const item = map.newCounted(deleted);
    map.add(outliving.get());
    map.add(displaced.get());
    map.add(item);
    map.add(item); // once more: still one owner
    EXPECT_EQ(displacedDeleted, 0);
    displaced.reset();
    EXPECT_EQ(displacedDeleted, 1);
    EXPECT_EQ(map.size(), 1U);
    EXPECT_EQ(map.get(map.counted), item);
    EXPECT_EQ(deleted, 0);
    map.destroy();
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(displacedDeleted, 1);
    EXPECT_EQ(outlivingDeleted, 0);
}

TYPED_TEST(OwnedMaps, AddIgnoresNull) {
    MapOf<TypeParam> map;
    map.add(nullptr);
    EXPECT_EQ(map.size(), 0U);
    EXPECT_THAT(map.keys(), IsEmpty());
    EXPECT_EQ(map.get({}), nullptr);
}

TYPED_TEST(OwnedMaps, RemoveDeletesOneItem) {
    const typename MapOf<TypeParam>::Key none{};
    int deleted = 0;
    MapOf<TypeParam> map;
    map.add(map.newCounted(deleted));
    auto* const other = map.newItem(1);
    map.add(other);
    EXPECT_FALSE(map.remove(map.counted == none ? map.higher : none));
    EXPECT_EQ(map.size(), 2U);
    EXPECT_EQ(deleted, 0);
    EXPECT_TRUE(map.remove(map.counted));
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(map.size(), 1U);
    EXPECT_EQ(map.get(map.counted), nullptr);
    EXPECT_EQ(map.get(map.lower), other);
    EXPECT_THAT(map.keys(), ElementsAre(map.lower));
    EXPECT_FALSE(map.remove(map.counted));
    EXPECT_EQ(map.size(), 1U);
    EXPECT_EQ(deleted, 1);
}

TYPED_TEST(OwnedMaps, DestructorDeletesWhatIsLeft) {
    static_assert(std::has_virtual_destructor_v<typename MapOf<TypeParam>::Owner>,
                  "owners are deleted as what they derive from");
    int deleted = 0;
    MapOf<TypeParam> map;
    map.add(map.newCounted(deleted));
    map.add(map.newItem(1));
    EXPECT_TRUE(map.remove(map.lower));
    EXPECT_EQ(deleted, 0);
    map.destroy();
    EXPECT_EQ(deleted, 1);
}

TYPED_TEST(OwnedMaps, OwnersMayLieOnTheStack) {
    using Calls = typename TypeParam::Items;
    int deleted = 0;
    {
        auto owner = emptyOne<typename Calls::Owner>();
        Calls::add(owner, MapOf<TypeParam>::newCounted(deleted));
        Calls::add(owner, MapOf<TypeParam>::newItem(1));
        EXPECT_EQ(Calls::size(owner), 2U);
        EXPECT_EQ(deleted, 0);
    }
    EXPECT_EQ(deleted, 1);
}

TYPED_TEST(OwnedMaps, KeysAreANewListForTheCaller) {
    using Keys = std::unique_ptr<std::list<typename MapOf<TypeParam>::Key>>;
    MapOf<TypeParam> map;
    map.parse();
    const Keys first(map.newKeys());
    const Keys second(map.newKeys());
    EXPECT_NE(first, second);
    EXPECT_EQ(*first, *second);
    first->clear();
    EXPECT_EQ(map.keys().size(), map.size());
}

TYPED_TEST(OwnedMaps, ParsedItemsAreRemovedOneByOne) {
    int deleted = 0;
    MapOf<TypeParam> map;
    map.parse();
    QUOR_U32 left = map.size();
    for (const auto& key : map.keys()) {
        EXPECT_TRUE(map.remove(key));
        EXPECT_EQ(map.get(key), nullptr);
        EXPECT_FALSE(map.remove(key));
        EXPECT_EQ(map.size(), --left);
    }
    EXPECT_THAT(map.keys(), IsEmpty());
    map.add(map.newCounted(deleted));
    EXPECT_THAT(map.keys(), ElementsAre(map.counted));
    map.destroy();
    EXPECT_EQ(deleted, 1);
}

TYPED_TEST(OwnedMaps, AddDisplacesParsedItems) {
    int deleted = 0;
    MapOf<TypeParam> map;
    map.parse();
    const auto keys = map.keys();
    auto* const neighbour = map.get(map.higher);
    std::unique_ptr<typename MapOf<TypeParam>::Item> displaced(map.get(map.lower));
    auto* const item = map.newItem(1);
    map.add(item);
    EXPECT_EQ(map.get(map.lower), item);
    displaced.reset(); // while its owner lives
    EXPECT_EQ(map.get(map.lower), item);
    EXPECT_EQ(map.get(map.higher), neighbour);
    EXPECT_EQ(map.keys(), keys);
    EXPECT_TRUE(map.remove(map.lower));

    displaced.reset(map.get(map.counted));
    map.add(map.newCounted(deleted));
    EXPECT_EQ(map.size(), keys.size() - 1);
    displaced.reset();
    EXPECT_EQ(deleted, 0);
    map.destroy();
    EXPECT_EQ(deleted, 1);
}

TYPED_TEST(OwnedMaps, DisplacedParsedItemsAreStillThere) {
    MapOf<TypeParam> map;
    map.parse();
    auto* const displaced = map.get(map.lower);
    map.add(map.newItem(1));
    EXPECT_EQ(map.keyOf(displaced), map.lower);
    EXPECT_NE(map.get(map.lower), nullptr);
}

TYPED_TEST(OwnedMaps, AddedItemsAreRemovedFromParsedOwners) {
    int removed = 0;
    int deleted = 0;
    MapOf<TypeParam> map;
    map.parse();
    const QUOR_U32 size = map.size();
    EXPECT_TRUE(map.remove(map.counted)); // a parsed one
    map.add(map.newCounted(removed));
    EXPECT_EQ(map.size(), size);
    EXPECT_TRUE(map.remove(map.counted));
    EXPECT_EQ(removed, 1);
    map.add(map.newCounted(deleted));
    map.destroy();
    EXPECT_EQ(deleted, 1);
}

TYPED_TEST(OwnedMaps, CopiesOfParsedOwnersOwnTheirItems) {
    MapOf<TypeParam> map;
    map.parse();
    const auto keys = map.keys();
    if (map.copy()) {
        std::unique_ptr<typename MapOf<TypeParam>::Item> displaced(map.get(map.lower));
        auto* const item = map.newItem(1);
        map.add(item);
        EXPECT_EQ(map.get(map.lower), item);
        EXPECT_EQ(map.keys(), keys);
        displaced.reset();
        EXPECT_TRUE(map.remove(map.higher));
    }
}
