#include "describing/Describing.h"

#include "describing/Catalogue.h"

namespace inspect {

namespace {

void decodeText(Field& field, Text& text, const Charset& charset) {
    if (!text.isIsoCode) {
        ShownText shown = charset.decode(text.raw);
        text.decoded = std::move(shown.text);
        field.reading = std::move(shown.remark);
    }
}

void decodeTexts(Fields& fields, const Charset& charset) {
    for (Field& field : fields) {
        if (auto* const text = std::get_if<Text>(&field.value)) {
            decodeText(field, *text, charset);
        } else if (auto* const object = std::get_if<Object>(&field.value)) {
            decodeTexts(object->fields, charset);
        } else if (auto* const list = std::get_if<List>(&field.value)) {
            decodeTexts(list->elements, charset);
        }
    }
}

} // namespace

Fields describe(const Quor::TISDBTTable& table, const Charset& charset) {
    Fields fields = Catalogue::instance().describe(table);
    decodeTexts(fields, charset);
    return fields;
}

Field describe(const Quor::TISDBTDescriptor& descriptor, const Charset& charset) {
    Fields fields{Catalogue::instance().describe(descriptor)};
    decodeTexts(fields, charset);
    return std::move(fields.front());
}

} // namespace inspect
