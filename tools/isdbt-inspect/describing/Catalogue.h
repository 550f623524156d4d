#pragma once

#include "TISDBTTable.h"
#include "describing/DescriptorKinds.h"
#include "describing/Field.h"
#include "tables/TableKinds.h"

#include <initializer_list>
#include <list>
#include <map>
#include <memory>
#include <typeindex>
#include <utility>

namespace inspect {

/// What the tool knows of each class of the library: how it is described, by one function from the object to its
/// fields, and of a descriptor its name and the tables that carry it.
class Catalogue {
    template <class Function> struct Argument;
    template <class T> struct Argument<Fields (*)(const T&)> { using Type = T; };

public:
    /// The classes that the library has.
    static const Catalogue& instance();

    /// Adds a table class.
    /// @tparam Describe Fields(const Table&)
    template <auto Describe> void addTable() {
        using Table = typename Argument<decltype(Describe)>::Type;
        m_tables.emplace(typeid(Table),
                         [](const Quor::TISDBTTable& table) { return Describe(static_cast<const Table&>(table)); });
    }

    /// Adds a descriptor class under its name.
    /// @tparam Describe Fields(const Descriptor&), or of a base class of the one that is given beside it
    /// @param tables  the table_ids of the tables that carry it
    /// @param variant tells classes of the same name apart
    template <auto Describe, class Descriptor = typename Argument<decltype(Describe)>::Type>
    void addDescriptor(std::string_view name, std::initializer_list<std::uint8_t> tables,
                       std::string_view variant = {}) {
        m_descriptors.emplace(typeid(Descriptor),
                              Description{name, variant, [](const Quor::TISDBTDescriptor& descriptor) {
                                              return Describe(static_cast<const Descriptor&>(descriptor));
                                          }});
        for (const std::uint8_t table : tables) {
            m_kinds.emplace(std::pair(table, Descriptor::DESCRIPTOR_TAG),
                            DescriptorKind{name, [](QUOR_U8* data, QUOR_U32 length, QUOR_U16* errorCode) {
                                               return std::unique_ptr<Quor::TISDBTDescriptor>(
                                                   Descriptor::parse(data, length, nullptr, errorCode));
                                           }});
        }
    }

    Fields describe(const Quor::TISDBTTable& table) const;
    Field describe(const Quor::TISDBTDescriptor& descriptor) const;

    /// The kind of a tag in the sections of a table; null when the library skips it.
    const DescriptorKind* find(std::uint8_t tableId, std::uint8_t tag) const;

private:
    Catalogue();

    struct Description {
        std::string_view name;
        std::string_view variant;
        Fields (*describe)(const Quor::TISDBTDescriptor&);
    };

    std::map<std::type_index, Fields (*)(const Quor::TISDBTTable&)> m_tables;
    std::map<std::type_index, Description> m_descriptors;
    std::map<std::pair<std::uint8_t, std::uint8_t>, DescriptorKind> m_kinds; ///< by table_id and tag
};

/// The descriptors of a table or of an entry of one, in the library's order.
template <class Holder> void appendDescriptors(Fields& fields, const Holder& holder) {
    const std::unique_ptr<std::list<QUOR_U8>> tags(holder.getDescriptorTags());
    for (const QUOR_U8 tag : *tags) {
        fields.push_back(Catalogue::instance().describe(*holder.getDescriptor(tag)));
    }
}

/// The holder's descriptor of a kind, or the one that it inherits from its table, marked as such.
template <class Holder, class Descriptor>
void appendOwnOrInherited(Fields& fields, const Holder& holder, Descriptor* (Holder::*get)(int, int*) const) {
    int inherited = 0;
    const Descriptor* const descriptor = (holder.*get)(1, &inherited);
    if (descriptor == nullptr) {
        return;
    }
    Field field = Catalogue::instance().describe(*descriptor);
    if (inherited != 0) {
        Fields& inner = std::get<Object>(field.value).fields;
        inner.insert(inner.begin(), flag("inherited", true));
    }
    fields.push_back(std::move(field));
}

/// Adds all of them. A build makes it from the public headers and fields.tsv.
void addClasses(Catalogue& catalogue);

} // namespace inspect
