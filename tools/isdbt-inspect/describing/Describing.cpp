#include "describing/Describing.h"

#include "describing/Catalogue.h"

namespace inspect {

namespace {

/// Adds what texts and times say to people.
void interpret(Fields& fields, const Conventions& conventions) {
    for (Field& field : fields) {
        if (field.isTime) {
            const auto time = static_cast<std::int32_t>(std::get<Number>(field.value).value);
            field.reading = conventions.zone.read(time);
            field.instant = conventions.zone.iso(time);
        } else if (auto* const text = std::get_if<Text>(&field.value)) {
            text->decoded = conventions.charset.decode(text->raw);
        } else if (auto* const object = std::get_if<Object>(&field.value)) {
            interpret(object->fields, conventions);
        } else if (auto* const list = std::get_if<List>(&field.value)) {
            interpret(list->elements, conventions);
        }
    }
}

} // namespace

Fields describe(const Quor::TISDBTTable& table, const Conventions& conventions) {
    Fields fields = Catalogue::instance().describe(table);
    interpret(fields, conventions);
    return fields;
}

Field describe(const Quor::TISDBTDescriptor& descriptor, const Conventions& conventions) {
    Fields fields{Catalogue::instance().describe(descriptor)};
    interpret(fields, conventions);
    return std::move(fields.front());
}

} // namespace inspect
