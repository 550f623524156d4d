#ifndef QUOR_DETAIL_ITEMS_H
#define QUOR_DETAIL_ITEMS_H

#include "QuorDefs.h"

#include <iterator>
#include <list>
#include <map>
#include <memory>
#include <string>

/// The owned items of tables and descriptors: maps by a natural key, lists by position in wire order.
namespace Quor::detail {

template <class Key, class Item> using ItemMap = std::map<Key, std::unique_ptr<Item>>;
template <class Item> using ItemList = std::list<std::unique_ptr<Item>>;

template <class Items> QUOR_U32 count(const Items& items) {
    return static_cast<QUOR_U32>(items.size());
}

template <class Key, class Item> Item* find(const ItemMap<Key, Item>& items, const Key& key) {
    const auto found = items.find(key);
    return found == items.end() ? nullptr : found->second.get();
}

/// Adds what the caller hands over. An item displaced by it is not deleted: the caller may still hold it.
template <class Key, class Item> void add(ItemMap<Key, Item>& items, const Key& key, Item* item) {
    std::unique_ptr<Item>& place = items[key];
    static_cast<void>(place.release());
    place.reset(item);
}

/// Adds what was found on the wire. An item displaced by it is deleted: nobody can hold it yet.
template <class Key, class Item> void store(ItemMap<Key, Item>& items, const Key& key, std::unique_ptr<Item> item) {
    items[key] = std::move(item);
}

/// Deletes the item of a key. @return whether there was one.
template <class Key, class Item> QUOR_BOOL remove(ItemMap<Key, Item>& items, const Key& key) {
    return items.erase(key) != 0;
}

/// A new list of the keys in ascending order, for the caller to delete.
template <class Key, class Item> std::list<Key>* keys(const ItemMap<Key, Item>& items) {
    std::unique_ptr<std::list<Key>> result(new std::list<Key>);
    for (const auto& entry : items) {
        result->push_back(entry.first);
    }
    return result.release();
}

/// The position of @p index, or the end when the list is shorter.
template <class List> auto position(List& items, QUOR_U32 index) -> decltype(items.begin()) {
    return index < items.size() ? std::next(items.begin(), static_cast<std::ptrdiff_t>(index)) : items.end();
}

/// The item at @p index, or null past the end.
template <class Item> Item* get(const ItemList<Item>& items, QUOR_U32 index) {
    const auto found = position(items, index);
    return found == items.end() ? nullptr : found->get();
}

/// Appends what the caller hands over; a null pointer takes a place as well.
template <class Item> void add(ItemList<Item>& items, Item* item) {
    items.emplace_back();
    items.back().reset(item);
}

/// Takes the items that were found on the wire, in their order.
template <class Item> auto appendTo(ItemList<Item>& items) {
    return [&items](std::unique_ptr<Item> item) { items.push_back(std::move(item)); };
}

/// Unlinks and deletes the item at @p index. @return false, with the list unchanged, when no item is there.
template <class Item> QUOR_BOOL remove(ItemList<Item>& items, QUOR_U32 index) {
    const auto found = position(items, index);
    if (found == items.end() || *found == nullptr) {
        return false;
    }
    items.erase(found);
    return true;
}

/// The value at @p index, or an empty one (0, "") past the end.
template <class Value> Value get(const std::list<Value>& values, QUOR_U32 index) {
    const auto found = position(values, index);
    return found == values.end() ? Value() : *found;
}

/// Removes the value at @p index. @return false, with the list unchanged, past the end.
template <class Value> QUOR_BOOL remove(std::list<Value>& values, QUOR_U32 index) {
    const auto found = position(values, index);
    if (found == values.end()) {
        return false;
    }
    values.erase(found);
    return true;
}

/// A deep copy, through the constructor from a pointer; null of null.
template <class T> std::unique_ptr<T> copy(T* source) {
    if (source == nullptr) {
        return nullptr;
    }
    return std::make_unique<T>(source);
}

/// Deep copies of all items under their keys.
template <class Key, class Item> ItemMap<Key, Item> copy(const ItemMap<Key, Item>& items) {
    ItemMap<Key, Item> result;
    for (const auto& entry : items) {
        result.emplace(entry.first, copy(entry.second.get()));
    }
    return result;
}

/// Deep copies of all items in their order.
template <class Item> ItemList<Item> copy(const ItemList<Item>& items) {
    ItemList<Item> result;
    for (const auto& item : items) {
        result.push_back(copy(item.get()));
    }
    return result;
}

} // namespace Quor::detail

#endif
