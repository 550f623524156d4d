#pragma once

#include "support/Lifetime.h"
#include "support/Parse.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <memory>

/// The four calls of a class that owns a list in wire order, and how an empty owner is made.
template <class Owner, class Item> struct OwnedList {
    std::function<std::unique_ptr<Owner>()> make;
    QUOR_U32 (Owner::*size)() const;
    Item* (Owner::*get)(QUOR_U8) const;
    void (Owner::*add)(Item*);
    QUOR_BOOL (Owner::*remove)(QUOR_U8);

    /// An owner of @p count items, each of which counts its own destruction.
    template <std::size_t N> std::unique_ptr<Owner> filled(std::array<int, N>& deleted) const {
        std::unique_ptr<Owner> owner = make();
        for (int& counter : deleted) {
            (owner.get()->*add)(new Counted<Item>(counter));
        }
        return owner;
    }
};

template <class Owner, class Item> void expectAddAppends(const OwnedList<Owner, Item>& list) {
    const std::unique_ptr<Owner> owner = list.make();
    EXPECT_EQ((*owner.*list.size)(), 0U);
    for (QUOR_U8 i = 0; i < 3; ++i) {
        Item* const item = new Item;
        (*owner.*list.add)(item);
        EXPECT_EQ((*owner.*list.size)(), i + 1U);
        EXPECT_EQ((*owner.*list.get)(i), item);
    }
    EXPECT_NE((*owner.*list.get)(0), (*owner.*list.get)(1));
}

template <class Owner, class Item> void expectRemoveDeletesOneItem(const OwnedList<Owner, Item>& list) {
    std::array<int, 3> deleted = {};
    const std::unique_ptr<Owner> owner = list.filled(deleted);
    Item* const first = (*owner.*list.get)(0);
    Item* const last = (*owner.*list.get)(2);
    EXPECT_EQ(deleted, (std::array<int, 3>{0, 0, 0}));
    EXPECT_TRUE((*owner.*list.remove)(1));
    EXPECT_EQ(deleted, (std::array<int, 3>{0, 1, 0}));
    EXPECT_EQ((*owner.*list.size)(), 2U);
    EXPECT_EQ((*owner.*list.get)(0), first);
    EXPECT_EQ((*owner.*list.get)(1), last);
    EXPECT_TRUE((*owner.*list.remove)(0));
    EXPECT_TRUE((*owner.*list.remove)(0));
    EXPECT_EQ(deleted, (std::array<int, 3>{1, 1, 1}));
    EXPECT_EQ((*owner.*list.size)(), 0U);
    EXPECT_FALSE((*owner.*list.remove)(0));
}

template <class Owner, class Item> void expectNothingPastTheEnd(const OwnedList<Owner, Item>& list) {
    const std::unique_ptr<Owner> empty = list.make();
    EXPECT_EQ((*empty.*list.get)(0), nullptr);
    EXPECT_FALSE((*empty.*list.remove)(0));
    std::array<int, 2> deleted = {};
    const std::unique_ptr<Owner> owner = list.filled(deleted);
    for (const QUOR_U8 index : {QUOR_U8{2}, QUOR_U8{3}, QUOR_U8{255}}) {
        EXPECT_EQ((*owner.*list.get)(index), nullptr);
        EXPECT_FALSE((*owner.*list.remove)(index));
    }
    EXPECT_EQ((*owner.*list.size)(), 2U);
    EXPECT_EQ(deleted, (std::array<int, 2>{0, 0}));
}

template <class Owner, class Item> void expectNullTakesAPlaceThatIsNoItem(const OwnedList<Owner, Item>& list) {
    const std::unique_ptr<Owner> owner = list.make();
    Item* const item = new Item;
    (*owner.*list.add)(nullptr);
    (*owner.*list.add)(item);
    EXPECT_EQ((*owner.*list.size)(), 2U);
    EXPECT_EQ((*owner.*list.get)(0), nullptr);
    EXPECT_EQ((*owner.*list.get)(1), item);
    EXPECT_FALSE((*owner.*list.remove)(0));
    EXPECT_EQ((*owner.*list.size)(), 2U);
    EXPECT_TRUE((*owner.*list.remove)(1));
}

/// Positions are bytes, so that the 256th item is the last one that they reach.
template <class Owner, class Item> void expectPositionsReachTo255(const OwnedList<Owner, Item>& list) {
    std::array<int, 257> deleted = {};
    const std::unique_ptr<Owner> owner = list.filled(deleted);
    EXPECT_EQ((*owner.*list.size)(), 257U);
    ASSERT_NE((*owner.*list.get)(255), nullptr);
    EXPECT_TRUE((*owner.*list.remove)(255));
    EXPECT_EQ(deleted[255], 1);
    EXPECT_TRUE((*owner.*list.remove)(255));
    EXPECT_EQ(deleted[256], 1);
    EXPECT_FALSE((*owner.*list.remove)(255));
    EXPECT_EQ((*owner.*list.size)(), 255U);
}

template <class Owner, class Item> void expectDestructorDeletesWhatIsLeft(const OwnedList<Owner, Item>& list) {
    std::array<int, 3> deleted = {};
    std::unique_ptr<Owner> owner = list.filled(deleted);
    EXPECT_TRUE((*owner.*list.remove)(2));
    owner.reset();
    EXPECT_EQ(deleted, (std::array<int, 3>{1, 1, 1}));
}
