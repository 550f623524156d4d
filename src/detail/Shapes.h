#ifndef QUOR_DETAIL_SHAPES_H
#define QUOR_DETAIL_SHAPES_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Bytes.h"
#include "detail/Items.h"
#include "detail/Outcome.h"

namespace Quor::detail {

/// The shape of every table's parse: object over the section, header check through the virtual slot, loops.
/// @param walk Outcome(Table&, Bytes section, QUOR_U16 remaining); `section` is all that the caller gave, `remaining`
///             the stated number of bytes between the header and the CRC_32.
template <class Table, class Walk>
Table* parseTable(QUOR_U8* sectionData, QUOR_U32 dataLength, int checkCRC32, QUOR_U16* errorCode, Table* previous,
                  Walk walk) {
    std::unique_ptr<Table> table(new Table(sectionData, dataLength));
    QUOR_U16 remaining = 0;
    if (!table->parseCommonHeader(sectionData, dataLength, checkCRC32, errorCode, &remaining, previous)) {
        return nullptr;
    }
    return decodeInto(std::move(table), nullptr, errorCode,
                      [&](Table& object) { return walk(object, Bytes(sectionData, dataLength), remaining); });
}

/// The shape of every descriptor's parse: header check, object over the caller's bytes, body.
/// @param decode      Outcome(Descriptor&, Bytes descriptor); `descriptor` begins with the tag.
/// @param withoutData what the object's data holder leaves out of `dataLength`.
template <class Descriptor, class Decode>
Descriptor* parseDescriptor(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* parsedLength, QUOR_U16* errorCode,
                            Decode decode, QUOR_U32 withoutData = 0) {
    constexpr QUOR_U8 minimum{Descriptor::MINIMUM_DESCRIPTOR_LENGTH};
    if (!TISDBTDescriptor::parseCommonHeader(sectionData, dataLength, errorCode, minimum, Descriptor::DESCRIPTOR_TAG)) {
        return nullptr;
    }
    return decodeInto(std::unique_ptr<Descriptor>(new Descriptor(sectionData, dataLength - withoutData)), parsedLength,
                      errorCode, [&](Descriptor& object) { return decode(object, Bytes(sectionData, dataLength)); });
}

/// The same for a class whose base decodes the body in its virtual parseData(), which reports the length itself.
template <class Descriptor>
Descriptor* parseDescriptorData(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* parsedLength,
                                QUOR_U16* errorCode) {
    return parseDescriptor<Descriptor>(
        sectionData, dataLength, parsedLength, errorCode, [=](Descriptor& object, Bytes descriptor) {
            const Bytes body = descriptor.from(TISDBTDescriptor::COMMON_HEADER_LENGTH);
            const bool sound = object.parseData(body.data(), body.size(), parsedLength, errorCode);
            return sound ? Outcome::done() : Outcome::failedBelow();
        });
}

/// The shape of every loop item's parse.
/// @param decode Outcome(Item&, Bytes left); `left` is what is left of the loop.
template <class Item, class Decode>
Item* parseItem(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* itemLength, QUOR_U16* errorCode, Decode decode) {
    return decodeInto(std::unique_ptr<Item>(new Item), itemLength, errorCode,
                      [&](Item& object) { return decode(object, Bytes(sectionData, dataLength)); });
}

/// Where a walk over items ended.
struct ItemWalk {
    explicit ItemWalk(Bytes body) : left(body.size()) {}

    bool complete = true;
    bool stuck = false; ///< the last item was sound but took no byte
    QUOR_U32 last = 0;  ///< bytes of the last item; 0 when there was none
    QUOR_U32 left;      ///< bytes that were left when the walk ended
};

/// Parses the next item of a walk. An item that takes no byte, or more than is left, counts as failed.
template <class Item, class Keep> void parseNextItem(Bytes body, ItemWalk& walk, QUOR_U16* errorCode, Keep& keep) {
    QUOR_U32 length = 0;
    std::unique_ptr<Item> item(Item::parse(body.from(body.size() - walk.left).data(), walk.left, &length, errorCode));
    walk.stuck = item != nullptr && length == 0;
    walk.complete = item != nullptr && !walk.stuck && length <= walk.left;
    if (walk.complete) {
        keep(std::move(item));
        walk.last = length;
        walk.left -= length;
    }
}

/// Parses items one behind the other until the body is used up or an item fails.
/// @param keep takes each item as a std::unique_ptr
template <class Item, class Keep> ItemWalk parseItems(Bytes body, QUOR_U16* errorCode, Keep keep) {
    ItemWalk walk(body);
    while (walk.complete && walk.left != 0) {
        parseNextItem<Item>(body, walk, errorCode, keep);
    }
    return walk;
}

/// Parses a number of items one behind the other into a list, until an item fails.
template <class Item> ItemWalk parseItems(Bytes body, QUOR_U32 number, QUOR_U16* errorCode, ItemList<Item>& items) {
    ItemWalk walk(body);
    const auto keep = appendTo(items);
    for (; walk.complete && number != 0; --number) {
        parseNextItem<Item>(body, walk, errorCode, keep);
    }
    return walk;
}

} // namespace Quor::detail

#endif
