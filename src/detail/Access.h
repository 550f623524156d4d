#ifndef QUOR_DETAIL_ACCESS_H
#define QUOR_DETAIL_ACCESS_H

#include "TISDBTTable.h"

namespace Quor::detail {

/// What the parsers may do with the classes besides their public interface: the friend of them all.
struct Access {
    static QUOR_U8*& data(TISDBTDataHolder& holder) { return holder.m_pData; }
    static QUOR_U32& length(TISDBTDataHolder& holder) { return holder.m_iDataLength; }

    /// The block that a table took last; see Memory.
    static void*& lastBlock(TISDBTTable& table) { return table.m_pLastBlock; }

    /// Reads the object's fields from its bytes.
    template <class Object, class... Values> static auto decode(Object& object, Values&... values) {
        return object.decode(values...);
    }

    /// The same from the bytes behind a descriptor's header.
    template <class Object, class... Values> static auto decodeBody(Object& object, Values&... values) {
        return object.decodeBody(values...);
    }

    /// Makes and reads the class of object that a descriptor calls for.
    template <class Descriptor, class... Values> static auto parseVariant(Values&... values) {
        return Descriptor::parseVariant(values...);
    }
};

} // namespace Quor::detail

#endif
