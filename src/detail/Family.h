#ifndef QUOR_DETAIL_FAMILY_H
#define QUOR_DETAIL_FAMILY_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Bytes.h"
#include "detail/Outcome.h"

#include <array>
#include <list>
#include <memory>

namespace Quor::detail {

/// One kind of descriptor that a holder keeps at most one of: how it is parsed, and in which member it lies.
template <class Holder> struct Kind {
    QUOR_U8 tag;
    QUOR_U32 minimumLength;
    bool (*parse)(Holder& holder, QUOR_U8* data, QUOR_U32 length, QUOR_U16* errorCode);
    TISDBTDescriptor* (*get)(const Holder& holder);
};

template <class Member> struct MemberOf;
template <class H, class D> struct MemberOf<std::unique_ptr<D> H::*> {
    using Holder = H;
    using Descriptor = D;
};

/// The kind that lies in a member. @tparam Descriptor is named only where the member's type is a base of several
/// kinds.
template <auto Member, class Descriptor = typename MemberOf<decltype(Member)>::Descriptor> constexpr auto kind() {
    using Holder = typename MemberOf<decltype(Member)>::Holder;
    return Kind<Holder>{Descriptor::DESCRIPTOR_TAG, Descriptor::MINIMUM_DESCRIPTOR_LENGTH,
                        // What a repeated descriptor displaces is deleted: nobody can hold it yet.
                        [](Holder& holder, QUOR_U8* data, QUOR_U32 length, QUOR_U16* errorCode) {
                            (holder.*Member).reset(Descriptor::parse(data, length, nullptr, errorCode));
                            return holder.*Member != nullptr;
                        },
                        [](const Holder& holder) -> TISDBTDescriptor* { return (holder.*Member).get(); }};
}

/// Stuffing in the loops of NIT, SDT and AIT: skipped without a line in the log.
constexpr QUOR_U8 STUFFING_TAG = 0x42;

/// What became of one descriptor of a loop.
enum class Dispatch {
    Stored,
    Unknown, ///< no kind of the family; nothing but its header was read
    Overrun, ///< it, or its header, reaches beyond the bytes that there are
    Failed   ///< its parse failed and has written the error code
};

/// The kinds of descriptors that a class of holders keeps, listed once, in the order of getDescriptorTags().
template <class Holder, std::size_t N> class Family {
public:
    template <class... Kinds> constexpr explicit Family(Kinds... kinds) : m_kinds{kinds...} {}

    /// Parses the descriptor at the beginning of @p left into the member of its kind.
    Dispatch dispatch(Holder& holder, Bytes left, QUOR_U16* errorCode) const {
        if (!left.has(0, TISDBTDescriptor::COMMON_HEADER_LENGTH)) {
            return Dispatch::Overrun;
        }
        const Kind<Holder>* const known = find(left.u8(0));
        if (known == nullptr) {
            return Dispatch::Unknown;
        }
        const QUOR_U32 length = TISDBTDescriptor::COMMON_HEADER_LENGTH + left.u8(1);
        // A descriptor below its minimum is refused by its header, so that its body need not be there.
        if (left.u8(1) >= known->minimumLength && !left.has(0, length)) {
            return Dispatch::Overrun;
        }
        return known->parse(holder, left.data(), length, errorCode) ? Dispatch::Stored : Dispatch::Failed;
    }

    /// The descriptor held for a tag, or null.
    TISDBTDescriptor* get(const Holder& holder, QUOR_U8 tag) const {
        const Kind<Holder>* const known = find(tag);
        return known == nullptr ? nullptr : held(holder, *known);
    }

    /// The tags of the descriptors held: a new list, for the caller to delete.
    std::list<QUOR_U8>* tags(const Holder& holder) const {
        std::unique_ptr<std::list<QUOR_U8>> result(new std::list<QUOR_U8>);
        for (const Kind<Holder>& each : m_kinds) {
            if (held(holder, each) != nullptr) {
                result->push_back(each.tag);
            }
        }
        return result.release();
    }

private:
    const Kind<Holder>* find(QUOR_U8 tag) const {
        for (const Kind<Holder>& each : m_kinds) {
            if (each.tag == tag) {
                return &each;
            }
        }
        return nullptr;
    }

    /// Two kinds may share a member, so that the tag decides which of them it holds.
    static TISDBTDescriptor* held(const Holder& holder, const Kind<Holder>& known) {
        TISDBTDescriptor* const descriptor = known.get(holder);
        return descriptor != nullptr && descriptor->getDescriptorTag() == known.tag ? descriptor : nullptr;
    }

    std::array<Kind<Holder>, N> m_kinds;
};

template <class Holder, class... More> Family(Kind<Holder>, More...) -> Family<Holder, 1 + sizeof...(More)>;

/// Walks a descriptor loop, which ends only when its 16-bit count comes to exactly 0: a descriptor that overruns it
/// wraps the count, and the walk goes on as far as the table's own bound, or at last the data, allows.
/// @param left    begins with the first descriptor; ends up behind the last one.
/// @param take    Outcome(bodyLength): the table's bound; subtracts the descriptor from the table's counts.
/// @param unknown void(tag): logs a descriptor of no kind.
/// @param tooLong Outcome(needed, left): logs a descriptor that the data ends before.
template <class Holder, std::size_t N, class Take, class Unknown, class TooLong>
Outcome walkLoop(const Family<Holder, N>& family, Holder& holder, Bytes& left, QUOR_U16 loopLength, QUOR_U16* errorCode,
                 Take take, Unknown unknown, TooLong tooLong) {
    while (loopLength != 0) {
        const QUOR_U32 bodyLength = left.u8(1);
        const QUOR_U32 length = TISDBTDescriptor::COMMON_HEADER_LENGTH + bodyLength;
        const Outcome taken = take(bodyLength);
        if (!taken.succeeded()) {
            return taken;
        }
        switch (family.dispatch(holder, left, errorCode)) {
        case Dispatch::Stored:
            break;
        case Dispatch::Unknown:
            unknown(left.u8(0));
            break;
        case Dispatch::Overrun:
            return tooLong(length, left.size());
        case Dispatch::Failed:
            return Outcome::failedBelow();
        }
        loopLength = static_cast<QUOR_U16>(loopLength - length);
        left = left.from(length);
    }
    return Outcome::done();
}

/// The bound of an entry's loop: the bytes left as the section counts them. Subtracts the descriptor from them.
/// @param shown   the number that the class's line gives for them.
/// @param tooLong Outcome(needed, left): logs a descriptor that does not fit.
template <class TooLong> Outcome takeStated(QUOR_U32& stated, QUOR_U32 bodyLength, QUOR_U32 shown, TooLong tooLong) {
    if (stated < TISDBTDescriptor::COMMON_HEADER_LENGTH) {
        return tooLong(TISDBTDescriptor::COMMON_HEADER_LENGTH, stated);
    }
    if (bodyLength > stated - TISDBTDescriptor::COMMON_HEADER_LENGTH) {
        return tooLong(bodyLength, shown);
    }
    stated -= TISDBTDescriptor::COMMON_HEADER_LENGTH + bodyLength;
    return Outcome::done();
}

/// A holder's own descriptor, or with @p inherit that of its parent, which then sets @p inherited.
template <auto Member, class Holder>
auto* inherit(const Holder& own, const Holder* parent, int inherit, int* inherited) {
    auto* const descriptor = (own.*Member).get();
    if (inherit == 0 || descriptor != nullptr || parent == nullptr) {
        return descriptor;
    }
    auto* const common = (parent->*Member).get();
    if (common != nullptr && inherited != nullptr) {
        *inherited = 1;
    }
    return common;
}

} // namespace Quor::detail

#endif
