// The items by a key that a class owns, and what all such classes promise.

#include "support/Classes.h"
#include "support/Lifetime.h"

#include <gmock/gmock.h>

#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

template <class Row> class OwnedMaps : public testing::Test {
protected:
    using Map = typename Row::Items;
    using Owner = typename Map::Owner;
    using Item = typename Map::Item;
    using Key = typename Map::Key;
    using Held = std::unique_ptr<Item>;

    OwnedMaps() : m_owner(new Owner(emptyOne<Owner>())) {}

    /// From here on, the map of an object that was parsed.
    void parse() {
        ASSERT_NE(m_parsed.object, nullptr) << testing::PrintToString(m_parsed.lines);
        m_owner = std::move(m_parsed.object);
        for (const Key& key : {m_higher, m_lower, m_counted}) {
            ASSERT_NE(get(key), nullptr);
        }
    }

    /// A new item like the first one, or the second one, that the row's bytes hold.
    Item* newItem(std::size_t index) const {
        const QUOR_U32 size = m_row.items.minimum;
        const auto begin = m_row.wire.begin() + static_cast<std::ptrdiff_t>(m_row.items.begin + index * size);
        const ByteVector wire(begin, begin + static_cast<std::ptrdiff_t>(size));
        if constexpr (std::is_same_v<Item, Quor::TProgramAssociation>) { // which its table parses
            return new Item(static_cast<QUOR_U16>(wire[0] << 8 | wire[1]), 0x100);
        } else {
            return parseAny<Item>(wire).object.release();
        }
    }

    /// A new item that counts its destructions: like the first one, or of the empty key.
    Item* newCounted(int& deleted) const {
        const Held first(newItem(0));
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

    static Key keyOf(Item* item) {
        auto owner = emptyOne<Owner>();
        Map::add(owner, item);
        return Map::keys(owner).at(0);
    }

    QUOR_U32 size() const { return Map::size(*m_owner); }
    Item* get(const Key& key) const { return Map::get(*m_owner, key); }
    void add(Item* item) { Map::add(*m_owner, item); }
    bool remove(const Key& key) { return Map::remove(*m_owner, key); }
    std::vector<Key> keys() const { return Map::keys(*m_owner); }
    void destroy() { m_owner.reset(); }

    int m_ignored = 0;
    const Row m_row = std::get<Row>(classRows());
    Parsed<Owner> m_parsed = parseAny<Owner>(m_row.wire);
    std::unique_ptr<Owner> m_owner;
    const Key m_higher = keyOf(newItem(0));
    const Key m_lower = keyOf(newItem(1));
    const Key m_counted = keyOf(newCounted(m_ignored));
};

TYPED_TEST_SUITE(OwnedMaps, RowsOf<Holds::MAP>, OwnerName);

} // namespace

TYPED_TEST(OwnedMaps, AddStoresUnderTheKeyOfTheItem) {
    EXPECT_EQ(this->size(), 0U);
    EXPECT_THAT(this->keys(), IsEmpty());
    auto* const higher = this->newItem(0);
    this->add(higher);
    EXPECT_EQ(this->size(), 1U);
    EXPECT_EQ(this->get(this->m_higher), higher);
    EXPECT_EQ(this->get(this->m_lower), nullptr);
    auto* const lower = this->newItem(1);
    this->add(lower);
    EXPECT_EQ(this->size(), 2U);
    EXPECT_EQ(this->get(this->m_higher), higher);
    EXPECT_EQ(this->get(this->m_lower), lower);
    EXPECT_THAT(this->keys(), ElementsAre(this->m_lower, this->m_higher));
}

TYPED_TEST(OwnedMaps, AddDisplacesWithoutDeleting) {
    int outlivingDeleted = 0;
    int displacedDeleted = 0;
    int deleted = 0;
    const typename TestFixture::Held outliving(this->newCounted(outlivingDeleted));
    typename TestFixture::Held displaced(this->newCounted(displacedDeleted));
    auto* const item = this->newCounted(deleted);
    this->add(outliving.get());
    this->add(displaced.get());
    this->add(item);
    this->add(item); // once more: still one owner
    EXPECT_EQ(displacedDeleted, 0);
    displaced.reset();
    EXPECT_EQ(displacedDeleted, 1);
    EXPECT_EQ(this->size(), 1U);
    EXPECT_EQ(this->get(this->m_counted), item);
    EXPECT_EQ(deleted, 0);
    this->destroy();
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(displacedDeleted, 1);
    EXPECT_EQ(outlivingDeleted, 0);
}

TYPED_TEST(OwnedMaps, AddIgnoresNull) {
    this->add(nullptr);
    EXPECT_EQ(this->size(), 0U);
    EXPECT_THAT(this->keys(), IsEmpty());
    EXPECT_EQ(this->get({}), nullptr);
}

TYPED_TEST(OwnedMaps, RemoveDeletesOneItem) {
    const typename TestFixture::Key none{};
    int deleted = 0;
    this->add(this->newCounted(deleted));
    auto* const other = this->newItem(1);
    this->add(other);
    EXPECT_FALSE(this->remove(this->m_counted == none ? this->m_higher : none));
    EXPECT_EQ(this->size(), 2U);
    EXPECT_EQ(deleted, 0);
    EXPECT_TRUE(this->remove(this->m_counted));
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(this->size(), 1U);
    EXPECT_EQ(this->get(this->m_counted), nullptr);
    EXPECT_EQ(this->get(this->m_lower), other);
    EXPECT_THAT(this->keys(), ElementsAre(this->m_lower));
    EXPECT_FALSE(this->remove(this->m_counted));
    EXPECT_EQ(this->size(), 1U);
    EXPECT_EQ(deleted, 1);
}

TYPED_TEST(OwnedMaps, DestructorDeletesWhatIsLeft) {
    static_assert(std::has_virtual_destructor_v<typename TestFixture::Owner>,
                  "owners are deleted as what they derive from");
    int deleted = 0;
    this->add(this->newCounted(deleted));
    this->add(this->newItem(1));
    EXPECT_TRUE(this->remove(this->m_lower));
    EXPECT_EQ(deleted, 0);
    this->destroy();
    EXPECT_EQ(deleted, 1);
}

TYPED_TEST(OwnedMaps, OwnersMayLieOnTheStack) {
    int deleted = 0;
    {
        auto owner = emptyOne<typename TestFixture::Owner>();
        TestFixture::Map::add(owner, this->newCounted(deleted));
        TestFixture::Map::add(owner, this->newItem(1));
        EXPECT_EQ(TestFixture::Map::size(owner), 2U);
        EXPECT_EQ(deleted, 0);
    }
    EXPECT_EQ(deleted, 1);
}

TYPED_TEST(OwnedMaps, KeysAreANewListForTheCaller) {
    using KeyList = std::list<typename TestFixture::Key>;
    this->parse();
    const std::unique_ptr<KeyList> first(TestFixture::Map::list(*this->m_owner));
    const std::unique_ptr<KeyList> second(TestFixture::Map::list(*this->m_owner));
    EXPECT_NE(first, second);
    EXPECT_EQ(*first, *second);
    first->clear();
    EXPECT_EQ(this->keys().size(), this->size());
}

TYPED_TEST(OwnedMaps, ParsedItemsAreRemovedOneByOne) {
    this->parse();
    QUOR_U32 left = this->size();
    for (const auto& key : this->keys()) {
        EXPECT_TRUE(this->remove(key));
        EXPECT_EQ(this->get(key), nullptr);
        EXPECT_FALSE(this->remove(key));
        EXPECT_EQ(this->size(), --left);
    }
    EXPECT_THAT(this->keys(), IsEmpty());
    int deleted = 0;
    this->add(this->newCounted(deleted));
    EXPECT_THAT(this->keys(), ElementsAre(this->m_counted));
    this->destroy();
    EXPECT_EQ(deleted, 1);
}

TYPED_TEST(OwnedMaps, AddDisplacesParsedItems) {
    this->parse();
    const auto keys = this->keys();
    auto* const neighbour = this->get(this->m_higher);
    typename TestFixture::Held displaced(this->get(this->m_lower));
    auto* const item = this->newItem(1);
    this->add(item);
    EXPECT_EQ(this->get(this->m_lower), item);
    displaced.reset(); // while its owner lives
    EXPECT_EQ(this->get(this->m_lower), item);
    EXPECT_EQ(this->get(this->m_higher), neighbour);
    EXPECT_EQ(this->keys(), keys);
    EXPECT_TRUE(this->remove(this->m_lower));

    int deleted = 0;
    displaced.reset(this->get(this->m_counted));
    this->add(this->newCounted(deleted));
    EXPECT_EQ(this->size(), keys.size() - 1);
    displaced.reset();
    EXPECT_EQ(deleted, 0);
    this->destroy();
    EXPECT_EQ(deleted, 1);
}

TYPED_TEST(OwnedMaps, DisplacedParsedItemsAreStillThere) {
    this->parse();
    auto* const displaced = this->get(this->m_lower);
    this->add(this->newItem(1));
    EXPECT_EQ(TestFixture::keyOf(displaced), this->m_lower); // and deletes it with a map of its own
    EXPECT_NE(this->get(this->m_lower), nullptr);
}

TYPED_TEST(OwnedMaps, AddedItemsAreRemovedFromParsedOwners) {
    this->parse();
    const QUOR_U32 size = this->size();
    EXPECT_TRUE(this->remove(this->m_counted)); // a parsed one
    int removed = 0;
    this->add(this->newCounted(removed));
    EXPECT_EQ(this->size(), size);
    EXPECT_TRUE(this->remove(this->m_counted));
    EXPECT_EQ(removed, 1);
    int deleted = 0;
    this->add(this->newCounted(deleted));
    this->destroy();
    EXPECT_EQ(deleted, 1);
}

TYPED_TEST(OwnedMaps, CopiesOfParsedOwnersOwnTheirItems) {
    if constexpr (std::is_constructible_v<typename TestFixture::Owner, typename TestFixture::Owner*>) {
        this->parse();
        const auto keys = this->keys();
        typename TestFixture::Owner copy(this->m_owner.get());
        this->destroy();
        typename TestFixture::Held displaced(TestFixture::Map::get(copy, this->m_lower));
        auto* const item = this->newItem(1);
        TestFixture::Map::add(copy, item);
        EXPECT_EQ(TestFixture::Map::get(copy, this->m_lower), item);
        EXPECT_EQ(TestFixture::Map::keys(copy), keys);
        displaced.reset();
        EXPECT_TRUE(TestFixture::Map::remove(copy, this->m_higher));
    }
}
