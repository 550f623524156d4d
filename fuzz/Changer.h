#pragma once

#include "Parse.h"
#include "Reader.h"

/// Removes what an object holds, and adds to it.
class Changer {
public:
    /// @param reader has taken the keys of the object.
    /// @param bytes  where the items come from that are added.
    Changer(Reader& reader, const HeapBytes& bytes) : m_reader(reader), m_bytes(bytes) {}

    /// Empties a map by its keys, or a list from its first item on.
    /// @param remove whether there was something at a key or position.
    template <class Key, class Remove> void removeAll(Remove remove) {
        m_reader.each<Key>([&](const Key& key) {
            while (remove(key)) {
            }
        });
    }

    /// Adds one item to what removeAll() has emptied, so that it displaces none, which nobody would delete.
    template <class Item, class Add> void add(Add add) {
        if constexpr (std::is_class_v<Item> && !std::is_same_v<Item, std::string>) {
            if (Item* const item = made<Item>()) {
                add(item);
            }
        } else {
            add(Item{});
        }
    }

private:
    template <class Item> Item* made() const {
        if constexpr (PARSES<Item>) {
            return parsed<Item>(m_bytes, m_bytes.size());
        } else {
            return new Item(1, 2);
        }
    }

    Reader& m_reader;
    const HeapBytes& m_bytes;
};
