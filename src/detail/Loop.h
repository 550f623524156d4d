#ifndef QUOR_DETAIL_LOOP_H
#define QUOR_DETAIL_LOOP_H

#include "detail/Family.h"

namespace Quor::detail {

/// Stuffing in the loops of NIT, SDT and AIT: skipped without a line in the log.
constexpr QUOR_U8 STUFFING_TAG = 0x42;

/// Walks a loop of descriptors, which ends only when its 16-bit count comes to exactly 0: a descriptor that overruns it
/// wraps the count, and the walk goes on as far as the table's own bound, or at last the data, allows.
/// @tparam Walk has `left`, the bytes from the first descriptor on, which end up behind the last one, and
///              Outcome take(bodyLength): the table's bound; subtracts the descriptor from the table's counts;
///              Outcome tooLong(needed, left): logs a descriptor that the data ends before;
///              void unknown(tag): logs a descriptor of no kind.
template <class Walk>
Outcome walkLoop(const Family& family, Descriptors& descriptors, Walk& walk, QUOR_U16 loopLength) {
    while (loopLength != 0) {
        const QUOR_U8 bodyLength = walk.left.u8(1);
        const QUOR_U32 length = TISDBTDescriptor::COMMON_HEADER_LENGTH + bodyLength;
        const Outcome taken = walk.take(bodyLength);
        if (!taken.succeeded()) {
            return taken;
        }
        if (!walk.left.has(0, TISDBTDescriptor::COMMON_HEADER_LENGTH)) {
            return walk.tooLong(length, walk.left.size());
        }
        const QUOR_U8 tag = walk.left.u8(0);
        const Kind* const kind = family.find(tag);
        if (kind == nullptr) {
            walk.unknown(tag);
        } else if (bodyLength < kind->minimumLength) {
            // Its header refuses it, so that its body need not be there.
            return refuse(*kind, walk.left.data(), length);
        } else if (!walk.left.has(0, length)) {
            return walk.tooLong(length, walk.left.size());
        } else {
            family.takePlace(descriptors, *kind); // a failure takes all of the descriptors away
            Outcome outcome = Outcome::done();
            TISDBTDescriptor* const descriptor = kind->parse(walk.left.data(), length, walk.left.memory(), outcome);
            if (descriptor == nullptr) {
                return outcome;
            }
            Family::keep(descriptors, descriptor);
        }
        loopLength = static_cast<QUOR_U16>(loopLength - length);
        walk.left = walk.left.from(length);
    }
    return Outcome::done();
}

/// The bound of an entry's loop: the bytes left as the section counts them. Subtracts the descriptor from them.
/// @param shown what the class's line gives less than it compares with.
template <class Walk> Outcome takeStated(Walk& walk, QUOR_U32 bodyLength, QUOR_U32 shownLess) {
    constexpr QUOR_U32 header = TISDBTDescriptor::COMMON_HEADER_LENGTH;
    if (walk.stated < header) {
        return walk.tooLong(header, walk.stated);
    }
    if (bodyLength > walk.stated - header) {
        return walk.tooLong(bodyLength, walk.stated - shownLess);
    }
    walk.stated -= header + bodyLength;
    return Outcome::done();
}

/// The descriptors of an entry, behind its fixed fields.
/// @tparam Walk has `stated`, too: the bytes left as the section counts them.
template <class Walk>
Outcome walkEntryLoop(const Family& family, Descriptors& descriptors, const Bytes& entry, QUOR_U32 stated,
                      QUOR_U32 fixedLength, QUOR_U16 loopLength) {
    Walk walk{entry.from(fixedLength), stated - fixedLength};
    if (walk.stated < loopLength) {
        return Walk::tooLong(loopLength, walk.stated);
    }
    const Outcome loop = walkLoop(family, descriptors, walk, loopLength);
    return loop.succeeded() ? Outcome::done(stated - walk.stated) : loop;
}

} // namespace Quor::detail

#endif
