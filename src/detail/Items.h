#ifndef QUOR_DETAIL_ITEMS_H
#define QUOR_DETAIL_ITEMS_H

#include "detail/Memory.h"
#include "detail/Owned.h"

#include <functional>
#include <list>
#include <memory>
#include <utility>

/// The rows in which tables and descriptors keep what they own: by position in wire order, or ascending by a natural
/// key, which the items themselves know.
namespace Quor::detail {

template <class Value> void Row<Value>::insert(QUOR_U32 position, Value value) {
    auto* at = ::new (end()) Value(std::move(value));
    ++m_iSize;
    for (; at != begin() + position; --at) {
        std::swap(at[0], at[-1]);
    }
}

template <class Value> void Row<Value>::erase(QUOR_U32 position) {
    for (Value* at = begin() + position; at + 1 != end(); ++at) {
        std::swap(at[0], at[1]);
    }
    --m_iSize;
    end()->~Value();
}

/// Appends a value that was found on the wire.
template <class Value> void append(Row<Value>& row, Value value, Memory& memory) {
    row.makeRoom(memory, row.size() + 1);
    row.insert(row.size(), std::move(value));
}

/// Appends a value that a caller gives.
template <class Value> void add(Row<Value>& row, Value value) {
    Memory heap;
    append(row, std::move(value), heap);
}

/// The value at @p index, or an empty one (0, "") past the end.
template <class Result, class Value> Result get(const Row<Value>& row, QUOR_U32 index) {
    return index < row.size() ? Result(row.begin()[index]) : Result();
}

/// Removes the value at @p index. @return false, with the row unchanged, past the end.
template <class Value> QUOR_BOOL remove(Row<Value>& row, QUOR_U32 index) {
    if (index >= row.size()) {
        return false;
    }
    row.erase(index);
    return true;
}

/// Appends what the caller hands over; a null pointer takes a place as well.
template <class Item> void add(Items<Item>& items, Item* item) {
    Memory heap;
    items.makeRoom(heap, items.size() + 1);
    items.insert(items.size(), std::unique_ptr<Item>(item));
}

/// Unlinks and deletes the item at @p index. @return false, with the row unchanged, when no item is there.
template <class Item> QUOR_BOOL remove(Items<Item>& items, QUOR_U32 index) {
    if (at(items, index) == nullptr) {
        return false;
    }
    items.erase(index);
    return true;
}

/// Where the item of a key stands in a row that ascends by @p key, or else would stand.
template <auto key, class Item, class Key> QUOR_U32 placeOf(const Items<Item>& items, const Key& wanted) {
    QUOR_U32 from = 0;
    QUOR_U32 to = items.size();
    // Most of what is sent ascends, so that a new key mostly belongs behind the last.
    if (to != 0 && std::invoke(key, *items.begin()[to - 1]) < wanted) {
        return to;
    }
    while (from != to) {
        const QUOR_U32 middle = (from + to) / 2;
        if (std::invoke(key, *items.begin()[middle]) < wanted) {
            from = middle + 1;
        } else {
            to = middle;
        }
    }
    return from;
}

/// Whether the item of a key stands at the place where it would.
template <auto key, class Item, class Key> bool holds(const Items<Item>& items, QUOR_U32 place, const Key& wanted) {
    return place != items.size() && std::invoke(key, *items.begin()[place]) == wanted;
}

template <auto key, class Item, class Key> Item* find(const Items<Item>& items, const Key& wanted) {
    const QUOR_U32 place = placeOf<key>(items, wanted);
    return holds<key>(items, place, wanted) ? items.begin()[place].get() : nullptr;
}

/// Adds what was found on the wire. An item displaced by it is deleted: nobody can hold it yet.
template <auto key, class Item> void store(Items<Item>& items, std::unique_ptr<Item> item, Memory& memory) {
    const auto& wanted = std::invoke(key, *item);
    const QUOR_U32 place = placeOf<key>(items, wanted);
    if (holds<key>(items, place, wanted)) {
        items.begin()[place] = std::move(item);
    } else {
        items.makeRoom(memory, items.size() + 1);
        items.insert(place, std::move(item));
    }
}

/// Adds what the caller hands over; null is ignored. An item displaced by it is not deleted: the caller may hold it.
template <auto key, class Item> void add(Items<Item>& items, Item* item) {
    if (item == nullptr) {
        return;
    }
    const auto& wanted = std::invoke(key, *item);
    const QUOR_U32 place = placeOf<key>(items, wanted);
    if (holds<key>(items, place, wanted)) {
        static_cast<void>(items.begin()[place].release());
        items.begin()[place].reset(item);
    } else {
        Memory heap;
        items.makeRoom(heap, items.size() + 1);
        items.insert(place, std::unique_ptr<Item>(item));
    }
}

/// Deletes the item of a key. @return whether there was one.
template <auto key, class Item, class Key> QUOR_BOOL remove(Items<Item>& items, const Key& wanted) {
    const QUOR_U32 place = placeOf<key>(items, wanted);
    return holds<key>(items, place, wanted) && remove(items, place);
}

/// A new list of the keys in ascending order, for the caller to delete.
template <auto key, class Item> auto* keys(const Items<Item>& items) {
    using Key = std::decay_t<std::invoke_result_t<decltype(key), const Item&>>;
    std::unique_ptr<std::list<Key>> result(new std::list<Key>);
    for (const std::unique_ptr<Item>& item : items) {
        result->push_back(std::invoke(key, *item));
    }
    return result.release();
}

/// A deep copy, through the constructor from a pointer; null of null.
template <class T> std::unique_ptr<T> copy(T* source) {
    return std::unique_ptr<T>(source == nullptr ? nullptr : new T(source));
}

/// Deep copies of all items in their order.
template <class Item> Items<Item> copy(const Items<Item>& items) {
    Memory heap;
    Items<Item> result;
    result.makeRoom(heap, items.size());
    for (const std::unique_ptr<Item>& item : items) {
        result.insert(result.size(), copy(item.get()));
    }
    return result;
}

/// A copy of all values in their order.
template <class Value> Row<Value> copy(const Row<Value>& row) {
    Memory heap;
    Row<Value> result;
    result.makeRoom(heap, row.size());
    for (const Value& value : row) {
        result.insert(result.size(), value);
    }
    return result;
}

} // namespace Quor::detail

#endif
