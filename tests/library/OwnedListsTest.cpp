#include "descriptors/TCompatibilityDescriptor.h"
#include "descriptors/TDIILocationDescriptor.h"
#include "descriptors/TDigitalCopyControlDescriptor.h"
#include "descriptors/TDownloadContentDescriptor.h"
#include "descriptors/TEmergencyInformationDescriptor.h"
#include "descriptors/TMosaicDescriptor.h"
#include "descriptors/TNVODReferenceDescriptor.h"
#include "descriptors/TParentalRatingDescriptor.h"
#include "descriptors/TPrefetchDescriptor.h"
#include "descriptors/TTSInformationDescriptor.h"
#include "sdtt/TSDTTTable.h"
#include "support/Lifetime.h"

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

using namespace Quor;

/// The lists in wire order that a class owns, and what all of them promise.
namespace {

template <class Owner> std::unique_ptr<Owner> empty() {
    if constexpr (std::is_default_constructible_v<Owner>) {
        return std::make_unique<Owner>();
    } else {
        static QUOR_U8 nothing = 0;
        return std::make_unique<Owner>(&nothing, 0);
    }
}

template <class Get> struct Types;
template <class I, class O, class P> struct Types<I* (O::*)(P) const> {
    using Item = I;
    using Owner = O;
    using Position = P;
};

/// The four calls of a class that owns a list.
template <auto Size, auto Get, auto Add, auto Remove> class ListOf {
public:
    using Owner = typename Types<decltype(Get)>::Owner;
    using Item = typename Types<decltype(Get)>::Item;
    using Position = typename Types<decltype(Get)>::Position;

    ListOf() : m_owner(empty<Owner>()) {}

    /// With an item for each number, which counts the item's destruction.
    template <std::size_t N> explicit ListOf(std::array<int, N>& deleted) : ListOf() {
        for (int& counter : deleted) {
            add(new Counted<Item>(counter));
        }
    }

    QUOR_U32 size() const { return (*m_owner.*Size)(); }
    Item* get(Position position) const { return (*m_owner.*Get)(position); }
    void add(Item* item) { (*m_owner.*Add)(item); }
    QUOR_BOOL remove(Position position) { return (*m_owner.*Remove)(position); }
    void destroy() { m_owner.reset(); }

private:
    std::unique_ptr<Owner> m_owner;
};

using Lists = testing::Types<
    ListOf<&TCompatibilityDescriptor::getCompatibilityDescriptorItemSize,
           &TCompatibilityDescriptor::getCompatibilityDescriptorItem,
           &TCompatibilityDescriptor::addCompatibilityDescriptorItem,
           &TCompatibilityDescriptor::removeCompatibilityDescriptorItem>,
    ListOf<&TCompatibilityDescriptorItem::getCompatibilityDescriptorSubItemSize,
           &TCompatibilityDescriptorItem::getCompatibilityDescriptorSubItem,
           &TCompatibilityDescriptorItem::addCompatibilityDescriptorSubItem,
           &TCompatibilityDescriptorItem::removeCompatibilityDescriptorSubItem>,
    ListOf<&TDIILocationDescriptor::size, &TDIILocationDescriptor::get, &TDIILocationDescriptor::add,
           &TDIILocationDescriptor::remove>,
    ListOf<&TDigitalCopyControlDescriptor::size, &TDigitalCopyControlDescriptor::get,
           &TDigitalCopyControlDescriptor::add, &TDigitalCopyControlDescriptor::remove>,
    ListOf<&TDownloadContent::getScheduleInfoSize, &TDownloadContent::getScheduleInfo,
           &TDownloadContent::addScheduleInfo, &TDownloadContent::removeScheduleInfo>,
    ListOf<&TDownloadContentDescriptor::getDownloadContentDescriptorItemSize,
           &TDownloadContentDescriptor::getDownloadContentDescriptorItem,
           &TDownloadContentDescriptor::addDownloadContentDescriptorItem,
           &TDownloadContentDescriptor::removeDownloadContentDescriptorItem>,
    ListOf<&TEmergencyInformationDescriptor::size, &TEmergencyInformationDescriptor::get,
           &TEmergencyInformationDescriptor::add, &TEmergencyInformationDescriptor::remove>,
    ListOf<&TMosaicDescriptor::size, &TMosaicDescriptor::getCell, &TMosaicDescriptor::addCell,
           &TMosaicDescriptor::removeCell>,
    ListOf<&TNVODReferenceDescriptor::size, &TNVODReferenceDescriptor::get, &TNVODReferenceDescriptor::add,
           &TNVODReferenceDescriptor::remove>,
    ListOf<&TParentalRatingDescriptor::size, &TParentalRatingDescriptor::get, &TParentalRatingDescriptor::add,
           &TParentalRatingDescriptor::remove>,
    ListOf<&TPrefetchDescriptor::size, &TPrefetchDescriptor::get, &TPrefetchDescriptor::add,
           &TPrefetchDescriptor::remove>,
    ListOf<&TSDTTTable::getDownloadContentSize, &TSDTTTable::getDownloadContent, &TSDTTTable::addDownloadContent,
           &TSDTTTable::removeDownloadContent>,
    ListOf<&TTSInformationDescriptor::getTransmissionTypeCount, &TTSInformationDescriptor::getTransmissionType,
           &TTSInformationDescriptor::addTransmissionType, &TTSInformationDescriptor::removeTransmissionType>>;

struct OwnerName {
    template <class List> static std::string GetName(int /*position*/) {
        const std::string name = testing::internal::GetTypeName<typename List::Owner>();
        return name.substr(name.rfind(':') + 1);
    }
};

template <class List> class OwnedLists : public testing::Test {};

TYPED_TEST_SUITE(OwnedLists, Lists, OwnerName);

} // namespace

TYPED_TEST(OwnedLists, AddAppends) {
    TypeParam list;
    EXPECT_EQ(list.size(), 0U);
    for (QUOR_U8 i = 0; i < 3; ++i) {
        auto* const item = new typename TypeParam::Item;
        list.add(item);
        EXPECT_EQ(list.size(), i + 1U);
        EXPECT_EQ(list.get(i), item);
    }
    EXPECT_NE(list.get(0), list.get(1));
}

TYPED_TEST(OwnedLists, RemoveDeletesOneItem) {
    std::array<int, 3> deleted = {};
    TypeParam list(deleted);
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
    using Position = typename TypeParam::Position;
    TypeParam none;
    EXPECT_EQ(none.get(0), nullptr);
    EXPECT_FALSE(none.remove(0));
    std::array<int, 2> deleted = {};
    TypeParam list(deleted);
    for (const Position position : {Position{2}, Position{3}, Position{255}, std::numeric_limits<Position>::max()}) {
        EXPECT_EQ(list.get(position), nullptr);
        EXPECT_FALSE(list.remove(position));
    }
    EXPECT_EQ(list.size(), 2U);
    EXPECT_EQ(deleted, (std::array<int, 2>{0, 0}));
}

TYPED_TEST(OwnedLists, NullTakesAPlaceThatCannotBeRemoved) {
    TypeParam list;
    auto* const item = new typename TypeParam::Item;
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
    constexpr bool BYTE = std::numeric_limits<typename TypeParam::Position>::digits == 8;
    constexpr auto LAST = static_cast<typename TypeParam::Position>(BYTE ? 255 : 256);
    std::array<int, 257> deleted = {};
    TypeParam list(deleted);
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
    static_assert(std::has_virtual_destructor_v<typename TypeParam::Owner>,
                  "owners are deleted as what they derive from");
    std::array<int, 3> deleted = {};
    TypeParam list(deleted);
    EXPECT_TRUE(list.remove(2));
    list.destroy();
    EXPECT_EQ(deleted, (std::array<int, 3>{1, 1, 1}));
}
