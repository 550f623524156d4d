#pragma once

#include "descriptors/TISDBTDescriptor.h"
#include "support/Outcome.h"

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

/// A descriptor of @p tag without any body, and the line that its header check then logs.
template <class Table, class Entry>
DescriptorKind<Table, Entry> kindWithMinimum(const std::string& name, const std::string& good, QUOR_U32 minimum) {
    DescriptorKind<Table, Entry> kind{name, 0, hex(good), {}, {}, 0, {}, {}, {}};
    kind.tag = kind.good.at(0);
    kind.bad = descriptor(kind.tag, fill(minimum - 1, 0x00));
    kind.badCode = Quor::TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH;
    kind.badLines = {"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is required: " +
                     std::to_string(minimum + 1) + " < " + std::to_string(minimum + 2) + ". Aborting!"};
    return kind;
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
