#ifndef QUOR_DETAIL_FAMILY_H
#define QUOR_DETAIL_FAMILY_H

#include "detail/Bytes.h"
#include "detail/Descriptors.h"
#include "detail/Memory.h"
#include "detail/Outcome.h"

#include <array>
#include <list>
#include <memory>
#include <type_traits>

namespace Quor::detail {

/// Parses a descriptor whose tag and length have been checked. What it takes and gives fits into registers.
/// @param place memory for the descriptor; null for one that comes in variants.
/// @return the descriptor, which is the caller's, or null with the reason in @p outcome.
template <class Descriptor>
TISDBTDescriptor* parseAs(void* place, QUOR_U8* data, QUOR_U32 length, Memory& memory, Outcome& outcome) {
    const Bytes bytes = Bytes::of(data, length, memory);
    if constexpr (std::is_abstract_v<Descriptor>) {
        return Access::parseVariant<Descriptor>(bytes, outcome);
    } else {
        std::unique_ptr<Descriptor> descriptor(::new (place) Descriptor(data, length));
        outcome = Access::decode(*descriptor, bytes);
        return outcome.succeeded() ? descriptor.release() : nullptr;
    }
}

/// A deep copy on the heap.
template <class Descriptor> Descriptor* copyOf(Descriptor* source) {
    if constexpr (std::is_abstract_v<Descriptor>) {
        return Descriptor::clone(source);
    } else {
        return new Descriptor(source);
    }
}

/// One kind of descriptor.
struct Kind {
    QUOR_U8 tag;
    QUOR_U8 minimumLength;
    QUOR_U8 place; ///< in its family
    QUOR_U8 size;  ///< of the object; 0 when it comes in variants
    TISDBTDescriptor* (*parseAt)(void* place, QUOR_U8* data, QUOR_U32 length, Memory& memory, Outcome& outcome);

    [[gnu::always_inline]] TISDBTDescriptor* parse(QUOR_U8* data, QUOR_U32 length, Memory& memory,
                                                   Outcome& outcome) const {
        return parseAt(size == 0 ? nullptr : memory.take(size), data, length, memory, outcome);
    }
};

template <class Descriptor> constexpr Kind kind(std::size_t place = 0) {
    return Kind{Descriptor::DESCRIPTOR_TAG, QUOR_U8{Descriptor::MINIMUM_DESCRIPTOR_LENGTH}, static_cast<QUOR_U8>(place),
                QUOR_U8{std::is_abstract_v<Descriptor> ? 0 : sizeof(Descriptor)}, parseAs<Descriptor>};
}

/// Kinds that share one place: the one that arrives last is kept.
template <class... Descriptors> struct Either {};

/// The kinds of descriptors that a class of holders keeps, in the order of getDescriptorTags().
class Family {
public:
    template <std::size_t N>
    constexpr explicit Family(const std::array<Kind, N>& kinds) : m_pBegin(kinds.data()), m_pEnd(kinds.data() + N) {
        for (std::size_t i = 0; i < N; ++i) {
            m_numbers[kinds[i].tag] = static_cast<QUOR_U8>(i + 1);
        }
    }

    /// The kind of a tag, or null.
    const Kind* find(QUOR_U8 tag) const { return m_numbers[tag] == 0 ? nullptr : m_pBegin + (m_numbers[tag] - 1); }

    /// Takes the place of a kind for a descriptor that comes next. One that is there is deleted: nobody can hold it
    /// yet.
    [[gnu::always_inline]] void takePlace(Descriptors& descriptors, const Kind& kind) const {
        if (!isFree(descriptors, kind)) {
            removeFrom(descriptors, kind);
        }
        descriptors.m_iPlaces |= QUOR_U32{1} << kind.place;
    }

    /// Keeps the descriptor whose place was taken.
    static void keep(Descriptors& descriptors, TISDBTDescriptor* descriptor) {
        descriptor->m_pFormer = descriptors.m_pLast;
        descriptors.m_pLast = descriptor;
    }

    /// Whether no descriptor is in the place of a kind.
    static bool isFree(const Descriptors& descriptors, const Kind& kind) {
        return (descriptors.m_iPlaces >> kind.place & 1U) == 0;
    }

    /// The tags of the descriptors held: a new list, for the caller to delete.
    std::list<QUOR_U8>* tags(const Descriptors& descriptors) const;

private:
    [[gnu::cold]] void removeFrom(Descriptors& descriptors, const Kind& kind) const;

    const Kind* m_pBegin;
    const Kind* m_pEnd;
    std::array<QUOR_U8, 256> m_numbers{}; ///< of each tag's kind, from 1 on
};

/// A family, by the classes of its descriptors.
template <class... Places> class FamilyOf {
    template <class Descriptor> struct At {
        static constexpr std::size_t COUNT = 1;
        static constexpr void put(Kind*& next, std::size_t place) { *next++ = kind<Descriptor>(place); }
        static void copy(const Descriptors& source, Descriptors& target) {
            const Kind& kind = *FAMILY.find(Descriptor::DESCRIPTOR_TAG);
            auto* const descriptor = source.get<Descriptor>();
            if (descriptor != nullptr && Family::isFree(target, kind)) {
                FAMILY.takePlace(target, kind);
                Family::keep(target, copyOf(descriptor));
            }
        }
    };
    template <class... Descriptors> struct At<Either<Descriptors...>> {
        static constexpr std::size_t COUNT = sizeof...(Descriptors);
        static constexpr void put(Kind*& next, std::size_t place) { ((*next++ = kind<Descriptors>(place)), ...); }
        static void copy(const detail::Descriptors& source, detail::Descriptors& target) {
            (At<Descriptors>::copy(source, target), ...);
        }
    };

    static constexpr auto list() {
        static_assert(sizeof...(Places) <= 32, "Descriptors has a bit for each place");
        std::array<Kind, (At<Places>::COUNT + ...)> kinds{};
        Kind* next = kinds.data();
        std::size_t place = 0;
        (At<Places>::put(next, place++), ...);
        return kinds;
    }

    static constexpr auto KINDS = list();

public:
    static constexpr Family FAMILY{KINDS};

    /// Puts deep copies of descriptors into places that are free.
    static void copy(const Descriptors& source, Descriptors& target) { (At<Places>::copy(source, target), ...); }
};

/// The outcome of a descriptor that is shorter than its kind's minimum.
Outcome refuse(const Kind& kind, QUOR_U8* data, QUOR_U32 length);

/// The parse of a single descriptor: checks its header, too.
TISDBTDescriptor* parseDescriptor(const Kind& kind, QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                  QUOR_U16* errorCode);

template <class Descriptor>
Descriptor* parseDescriptor(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode) {
    return static_cast<Descriptor*>(parseDescriptor(kind<Descriptor>(), data, length, parsedLength, errorCode));
}

} // namespace Quor::detail

#endif
