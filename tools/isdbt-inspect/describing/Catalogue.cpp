#include "describing/Catalogue.h"

#include "describing/StandardReadings.h"

namespace inspect {

Catalogue::Catalogue() {
    addClasses(*this);
}

const Catalogue& Catalogue::instance() {
    static const Catalogue catalogue;
    return catalogue;
}

Fields Catalogue::describe(const Quor::TISDBTTable& table) const {
    return m_tables.at(typeid(table))(table);
}

Field Catalogue::describe(const Quor::TISDBTDescriptor& descriptor) const {
    const Description& kind = m_descriptors.at(typeid(descriptor));
    Field tag = identifier("descriptor_tag", descriptor.getDescriptorTag(), 2);
    if (!kind.variant.empty()) {
        tag = std::move(tag).standsFor(kind.variant);
    }
    Fields fields = kind.describe(descriptor);
    fields.insert(fields.begin(), std::move(tag));
    addStandardReading(kind.name, descriptor.getData(), fields);
    return object(kind.name, std::move(fields));
}

const DescriptorKind* Catalogue::find(std::uint8_t tableId, std::uint8_t tag) const {
    const auto found = m_kinds.find({tableId, tag});
    return found == m_kinds.end() ? nullptr : &found->second;
}

const DescriptorKind* knownDescriptor(std::uint8_t tableId, std::uint8_t tag) {
    return Catalogue::instance().find(tableId, tag);
}

} // namespace inspect
