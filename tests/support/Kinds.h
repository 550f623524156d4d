#pragma once

#include "descriptors/TISDBTDescriptor.h"
#include "support/Outcome.h"
#include "support/TypedRows.h"

#include <algorithm>
#include <functional>

/// One kind of descriptor that a table and its entries hold, and how they show it.
template <class Table, class Entry> struct DescriptorKind {
    std::string name;
    QUOR_U8 tag;
    ByteVector good;
    Lines lines; ///< what its parse logs though it succeeds
    ByteVector bad;
    QUOR_U16 badCode;
    Lines badLines;
    std::function<Quor::TISDBTDescriptor*(const Table&)> ofTable;
    std::function<Quor::TISDBTDescriptor*(const Entry&)> ofEntry;
};

template <class Table, class Entry> void PrintTo(const DescriptorKind<Table, Entry>& kind, std::ostream* out) {
    *out << kind.name;
}

template <class Kind> std::string kindName(const testing::TestParamInfo<Kind>& info) {
    return info.param.name;
}

/// A descriptor that the class refuses: one byte too short or, where none is needed, the fewest of 0xFF.
template <class T> ByteVector refusedOf(QUOR_U8 tag, QUOR_U8 minimum) {
    if (minimum != 0) {
        return descriptor(tag, fill(minimum - 1U, 0x00));
    }
    ByteVector wire;
    for (std::size_t size = 1; wire.empty() || parseBytes<T>(wire).object != nullptr; ++size) {
        wire = descriptor(tag, fill(size, 0xFF));
    }
    return wire;
}

/// The kind of a class, of whose parse a table and an entry say what it says by itself.
template <class Kind, class T, class In, class Items> Kind kindOf(const DescriptorRow<T, In, Items>& row) {
    Kind kind;
    const std::string name = nameOf<T>(); // "TNetworkNameDescriptor"
    kind.name = name.substr(1, name.rfind("Descriptor") - 1);
    kind.tag = row.tag;
    kind.good = row.wire;
    kind.lines = parseBytes<T>(kind.good).lines;
    kind.bad = refusedOf<T>(row.tag, row.minimum);
    const Parsed<T> refused = parseBytes<T>(kind.bad);
    kind.badCode = refused.error;
    kind.badLines = refused.lines;
    return kind;
}

/// The kinds in the order of getDescriptorTags(): as these tags, then those that joined later as in the list of
/// classes.
template <class Kind> std::vector<Kind> inOrder(std::vector<Kind> kinds, const ByteVector& tags) {
    const auto place = [&tags](const Kind& kind) { return std::find(tags.begin(), tags.end(), kind.tag); };
    std::stable_sort(kinds.begin(), kinds.end(),
                     [&](const Kind& one, const Kind& other) { return place(one) < place(other); });
    return kinds;
}

/// The good descriptors of all kinds, or of those that @p wanted picks by their place in the list.
template <class Kind, class Wanted> ByteVector descriptorsOf(const std::vector<Kind>& kinds, Wanted wanted) {
    ByteVector all;
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        if (wanted(i)) {
            all = join({kinds[i].good, all}); // the last of the list first on the wire
        }
    }
    return all;
}

template <class Kind, class Wanted> std::vector<QUOR_U8> tagsOf(const std::vector<Kind>& kinds, Wanted wanted) {
    std::vector<QUOR_U8> tags;
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        if (wanted(i)) {
            tags.push_back(kinds[i].tag);
        }
    }
    return tags;
}

template <class Kind> std::vector<QUOR_U8> tagsOf(const std::vector<Kind>& kinds) {
    return tagsOf(kinds, [](std::size_t /*place*/) { return true; });
}
