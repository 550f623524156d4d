#ifndef QUOR_DETAIL_DESCRIPTORS_H
#define QUOR_DETAIL_DESCRIPTORS_H

#include "descriptors/TISDBTDescriptor.h"

namespace Quor { // NOLINT(modernize-concat-nested-namespaces): C++11
namespace detail {

/// The descriptors of a table or of one of its entries, at most one of each kind. A private member of public classes;
/// nothing for callers.
class Descriptors {
public:
    Descriptors() = default;
    Descriptors(const Descriptors&) = delete;
    Descriptors& operator=(const Descriptors&) = delete;
    ~Descriptors() {
        for (TISDBTDescriptor* each = m_pLast; each != nullptr;) {
            TISDBTDescriptor* const former = each->m_pFormer;
            delete each;
            each = former;
        }
    }

    /// The descriptor with a tag, or null.
    TISDBTDescriptor* find(QUOR_U8 tag) const {
        TISDBTDescriptor* found = m_pLast;
        while (found != nullptr && found->getDescriptorTag() != tag) {
            found = found->m_pFormer;
        }
        return found;
    }

    /// The descriptor of a class, or null. With @p Other and their @p Base: of one of two classes that share a place.
    template <class Descriptor, class Other = Descriptor, class Base = Descriptor> Base* get() const {
        TISDBTDescriptor* found = find(Descriptor::DESCRIPTOR_TAG);
        if (found == nullptr && Other::DESCRIPTOR_TAG != Descriptor::DESCRIPTOR_TAG) {
            found = find(Other::DESCRIPTOR_TAG);
        }
        return static_cast<Base*>(found);
    }

    /// The same or, with @p inherit not 0 and none here, the one that @p common has, which may be null. Such a one
    /// stores 1 through @p inherited, which may be null.
    template <class Descriptor, class Other = Descriptor, class Base = Descriptor>
    Base* get(const Descriptors* common, int inherit, int* inherited) const {
        Base* const own = get<Descriptor, Other, Base>();
        if (own != nullptr || inherit == 0 || common == nullptr) {
            return own;
        }
        Base* const shared = common->get<Descriptor, Other, Base>();
        if (shared != nullptr && inherited != nullptr) {
            *inherited = 1;
        }
        return shared;
    }

private:
    friend class Family;

    TISDBTDescriptor* m_pLast = nullptr; ///< the one that arrived last; each knows the one before
    QUOR_U32 m_iPlaces = 0;              ///< the places of the family that are taken, a bit each
};

} // namespace detail
} // namespace Quor

#endif
