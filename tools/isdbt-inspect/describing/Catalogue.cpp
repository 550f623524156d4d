#include "describing/Catalogue.h"

#include "describing/Describing.h"

namespace inspect {

Catalogue::Catalogue() {
    addProgramTables(*this);
    addTimeTables(*this);
}

const Catalogue& Catalogue::instance() {
    static const Catalogue catalogue;
    return catalogue;
}

Fields Catalogue::describe(const Quor::TISDBTTable& table) const {
    return m_tables.at(typeid(table))(table);
}

Field Catalogue::describe(const Quor::TISDBTDescriptor& descriptor) const {
    const DescriptorKind& kind = m_descriptors.at(typeid(descriptor));
    Fields fields{identifier("descriptor_tag", descriptor.getDescriptorTag(), 2)};
    for (Field& field : kind.describe(descriptor)) {
        fields.push_back(std::move(field));
    }
    return object(kind.name, std::move(fields));
}

Fields describe(const Quor::TISDBTTable& table) {
    return Catalogue::instance().describe(table);
}

} // namespace inspect
