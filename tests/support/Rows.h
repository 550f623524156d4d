#pragma once

#include "support/Bytes.h"
#include "support/TakenList.h"

#include <type_traits>
#include <vector>

/// What the list of classes is made of. Benchmarks and fuzzers, which know no test framework, take it, too.

template <class Get> struct Getting;
template <class O, class I, class K> struct Getting<I* (O::*)(K) const> {
    using Owner = O;
    using Item = I;
    using Key = K;
};

enum class Holds { NOTHING, LIST, MAP };

struct NoItems {
    static constexpr Holds HOLDS = Holds::NOTHING;
};

/// Items that a class owns, in the order of the wire: the calls that receivers make.
template <auto Size, auto Get, auto Add, auto Remove> struct List {
    static constexpr Holds HOLDS = Holds::LIST;
    using Owner = typename Getting<decltype(Get)>::Owner;
    using Item = typename Getting<decltype(Get)>::Item;
    using Key = typename Getting<decltype(Get)>::Key;

    QUOR_U32 minimum; ///< fewest bytes of an item

    static QUOR_U32 size(const Owner& owner) { return (owner.*Size)(); }
    static Item* get(const Owner& owner, const Key& key) { return (owner.*Get)(key); }
    static void add(Owner& owner, Item* item) { (owner.*Add)(item); }
    static bool remove(Owner& owner, const Key& key) { return (owner.*Remove)(key); }
};

/// The same by a key.
template <auto Size, auto Get, auto Add, auto Remove, auto Keys> struct Map : List<Size, Get, Add, Remove> {
    static constexpr Holds HOLDS = Holds::MAP;
    using typename List<Size, Get, Add, Remove>::Owner;
    using typename List<Size, Get, Add, Remove>::Key;

    std::size_t begin; ///< of the items in the bytes that the owner is parsed from

    /// The caller's, however it is handed out.
    static std::list<Key>* list(const Owner& owner) {
        if constexpr (std::is_pointer_v<decltype((owner.*Keys)())>) {
            return (owner.*Keys)();
        } else {
            return &(owner.*Keys)();
        }
    }

    static std::vector<Key> keys(const Owner& owner) { return taken(list(owner)); }
};

template <auto Size, auto Get, auto Add, auto Remove> List<Size, Get, Add, Remove> list(QUOR_U32 minimum) {
    return {minimum};
}

template <class T> auto list(QUOR_U32 minimum) {
    return list<&T::size, &T::get, &T::add, &T::remove>(minimum);
}

/// @param begin where the items begin, each with no more bytes than @p minimum, at least the first two
template <auto Size, auto Get, auto Add, auto Remove, auto Keys>
Map<Size, Get, Add, Remove, Keys> map(QUOR_U32 minimum, std::size_t begin) {
    return {{minimum}, begin};
}

template <class L, class O> O ownerOf(L* (O::*)() const);

/// Of a descriptor without fields in front of the items.
template <auto Keys> auto map(QUOR_U32 minimum, std::size_t begin = 2) {
    using T = decltype(ownerOf(Keys));
    return map<&T::size, &T::get, &T::add, &T::remove, Keys>(minimum, begin);
}

template <class Getter> struct Handing;
template <class D, class H, class... A> struct Handing<D* (H::*)(A...) const> { using Holder = H; };

/// A getter as a base, which is found by the holder in its type.
template <class Getter> struct Held { Getter getter; };

/// The getters with which tables and their entries hand out the descriptor.
template <class... Getter> struct In : Held<Getter>... {};

template <class... Getter> In<Getter...> in(Getter... getters) {
    return {{getters}...};
}

template <class H, class... Getter>
constexpr bool HANDS_OUT = (std::is_same_v<typename Handing<Getter>::Holder, H> || ...);

/// The getter of a holder.
template <class H, class D, class... A> auto getterOf(const Held<D* (H::*)(A...) const>& held) {
    return held.getter;
}

template <class T, class G, class I> struct DescriptorRow {
    using Class = T;
    using Items = I;
    QUOR_U8 tag;
    QUOR_U8 minimum; ///< of descriptor_length
    ByteVector wire; ///< a good one
    G in;
    I items;
    QUOR_U32 unheld; ///< bytes of a descriptor that its data holder leaves out
};

template <class T> struct ItemRow {
    using Class = T;
    using Items = NoItems;
    QUOR_U32 minimum; ///< fewest bytes
};

template <class T, class I> struct OwnerRow {
    using Class = T;
    using Items = I;
    ByteVector wire; ///< a good one
    I items;
};

template <class T, class... Getter, class I = NoItems>
DescriptorRow<T, In<Getter...>, I> descriptorRow(QUOR_U8 tag, QUOR_U8 minimum, const char* body, In<Getter...> in,
                                                 I items = {}, QUOR_U32 unheld = 0) {
    return {tag, minimum, descriptor(tag, hex(body)), in, items, unheld};
}

template <class T> ItemRow<T> itemRow(QUOR_U32 minimum) {
    return {minimum};
}

template <class T, class I> OwnerRow<T, I> ownerRow(const char* wire, I items) {
    return {hex(wire), items};
}

/// The rows, of which no two have the same class and the same items. As bases they compile in a small part of the time
/// that a tuple of so many takes.
template <class... Row> struct Rows : Row... {};
template <class... Row> Rows(Row...) -> Rows<Row...>;

/// Calls @p call with each row.
template <class... Row, class Call> void forEachRow(const Rows<Row...>& rows, Call call) {
    (call(static_cast<const Row&>(rows)), ...);
}

template <class H, class Call, class Row> void callIfHeld(Call /*call*/, const Row& /*row*/) {}

template <class H, class Call, class T, class... Getter, class I>
void callIfHeld(Call call, const DescriptorRow<T, In<Getter...>, I>& row) {
    if constexpr (HANDS_OUT<H, Getter...>) {
        call(row);
    }
}

/// Calls @p call with the row of each descriptor that a table or an entry hands out.
template <class H, class Rows, class Call> void forEachHeld(const Rows& rows, Call call) {
    forEachRow(rows, [&](const auto& row) { callIfHeld<H>(call, row); });
}

/// A new object that holds nothing.
template <class T> T emptyOne() {
    if constexpr (std::is_default_constructible_v<T>) {
        return T();
    } else {
        static QUOR_U8 nothing = 0;
        return T(&nothing, 0);
    }
}
