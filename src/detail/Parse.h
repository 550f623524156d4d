#ifndef QUOR_DETAIL_PARSE_H
#define QUOR_DETAIL_PARSE_H

#include "detail/Bytes.h"
#include "detail/Items.h"
#include "detail/Outcome.h"

#include <algorithm>
#include <type_traits>

/// The parse of tables, entries and items: each decodes into a new object, which becomes visible only when all of it
/// proved sound. That of descriptors is in Family.h.
namespace Quor::detail {

/// A table over a private copy of the section; its header is checked, then decode() walks its loops.
/// decode() takes all that the caller gave, the stated number of bytes between header and CRC_32, and @p options.
/// @tparam density what a byte of the section is expected to take in objects, in tenths of a pointer's size.
template <class Table, unsigned density = 18, class... Options>
Table* parseTable(QUOR_U8* data, QUOR_U32 length, int checkCRC32, QUOR_U16* errorCode, Table* previous,
                  Options... options) {
    Memory memory;
    std::unique_ptr<Table> table = memory.makeTable<Table>(data, length, density);
    QUOR_U16 remaining = 0;
    if (!table->Table::parseCommonHeader(data, length, checkCRC32, errorCode, &remaining, previous)) {
        return nullptr;
    }
    const Bytes section(data, length, memory);
    const Outcome outcome = Access::decode(*table, section, remaining, options...);
    outcome.report(nullptr, errorCode);
    return outcome.succeeded() ? table.release() : nullptr;
}

/// An entry of a table's loop.
/// @param stated the bytes left as the section counts them, which may be more than there are.
template <class Entry> Outcome decodeEntry(std::unique_ptr<Entry>& entry, const Bytes& left, QUOR_U32 stated) {
    if constexpr (std::is_default_constructible_v<Entry>) {
        entry = left.memory().make<Entry>();
    } else {
        // A count that has wrapped promises more bytes than there are; who reads the entry's data must not follow it.
        entry = left.memory().make<Entry>(left.data(), std::min(stated, left.size()));
    }
    return Access::decode(*entry, left, stated);
}

/// The parse of a single entry.
/// @param vouched bytes that are there, however small @p length is.
template <class Entry>
Entry* parseEntry(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode, QUOR_U32 vouched = 0) {
    Memory heap;
    std::unique_ptr<Entry> entry;
    const Outcome outcome = decodeEntry(entry, Bytes(data, std::max(length, vouched), heap), length);
    outcome.report(parsedLength, errorCode);
    return outcome.succeeded() ? entry.release() : nullptr;
}

/// The parse of a single item of a descriptor.
template <class Item> Item* parseItem(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    Memory heap;
    std::unique_ptr<Item> item = heap.make<Item>();
    const Bytes left(data, length, heap);
    const Outcome outcome = Access::decode(*item, left);
    outcome.report(parsedLength, errorCode);
    return outcome.succeeded() ? item.release() : nullptr;
}

/// Decodes the bytes behind a descriptor's header into an object that is there.
template <class Descriptor>
QUOR_BOOL parseBody(Descriptor& descriptor, QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                    QUOR_U16* errorCode) {
    Memory heap;
    const Bytes body(data, length, heap);
    const Outcome outcome = Access::decodeBody(descriptor, body);
    outcome.report(parsedLength, errorCode);
    return outcome.succeeded();
}

/// A walk over the items of a descriptor, one behind the other.
struct ItemWalk {
    explicit ItemWalk(const Bytes& body) : left(body) {}

    /// Takes the next item. @return null when it fails, takes no byte, or takes more than is left.
    template <class Item> std::unique_ptr<Item> next() {
        std::unique_ptr<Item> item = left.memory().make<Item>();
        outcome = Access::decode(*item, left);
        stuck = outcome.succeeded() && outcome.length() == 0;
        complete = outcome.succeeded() && !stuck && outcome.length() <= left.size();
        if (!complete) {
            return nullptr;
        }
        last = outcome.length();
        left = left.from(last);
        return item;
    }

    /// Takes the next item as the last of a row. @return whether there was one.
    template <class Item> bool take(Items<Item>& items) {
        if (std::unique_ptr<Item> item = next<Item>()) {
            append(items, std::move(item), left.memory());
        }
        return complete;
    }

    Bytes left;
    Outcome outcome = Outcome::done(0); ///< of the last item
    QUOR_U32 last = 0;                  ///< bytes of the last sound item; 0 when there was none
    bool complete = true;
    bool stuck = false; ///< the last item was sound but took no byte
};

/// Takes items until the body is used up or one fails, in wire order.
template <class Item> ItemWalk decodeItems(const Bytes& body, Items<Item>& items) {
    ItemWalk walk(body);
    while (!walk.left.empty() && walk.take(items)) {
    }
    return walk;
}

/// The same, a number of items.
template <class Item> ItemWalk decodeItems(const Bytes& body, Items<Item>& items, QUOR_U32 number) {
    ItemWalk walk(body);
    for (; number != 0 && walk.take(items); --number) {
    }
    return walk;
}

/// Takes items until the body is used up or one fails, each under its key.
template <auto key, class Item> ItemWalk decodeItemsByKey(const Bytes& body, Items<Item>& items) {
    ItemWalk walk(body);
    while (!walk.left.empty() && walk.complete) {
        if (std::unique_ptr<Item> item = walk.next<Item>()) {
            store<key>(items, std::move(item), body.memory());
        }
    }
    return walk;
}

} // namespace Quor::detail

#endif
