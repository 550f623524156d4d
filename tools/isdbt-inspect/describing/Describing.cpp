#include "describing/Describing.h"

#include "describing/Catalogue.h"

namespace inspect {

namespace {

class TextDecoder {
public:
    TextDecoder(const Charset& charset, Coding told) : m_charset(charset), m_told(told) {}

    void decode(Fields& fields) const {
        for (Field& field : fields) {
            if (auto* const text = std::get_if<Text>(&field.value)) {
                decode(field, *text);
            } else if (auto* const object = std::get_if<Object>(&field.value)) {
                decode(object->fields);
            } else if (auto* const list = std::get_if<List>(&field.value)) {
                decode(list->elements);
            }
        }
    }

private:
    void decode(Field& field, Text& text) const {
        if (text.kind != Text::IsoCode) {
            ShownText shown =
                text.kind == Text::Name ? m_charset.decode(text.raw, m_told) : m_charset.decodeAddress(text.raw);
            text.decoded = std::move(shown.text);
            field.reading = std::move(shown.remark);
        }
    }

    const Charset& m_charset;
    Coding m_told;
};

/// What the fields tell of the coding holds for themselves, too.
Fields decoded(Fields fields, const Charset& charset, CodingGuess& guess) {
    guess.learn(fields);
    TextDecoder(charset, guess.coding()).decode(fields);
    return fields;
}

} // namespace

Fields describe(const Quor::TISDBTTable& table, const Charset& charset, CodingGuess& guess) {
    return decoded(Catalogue::instance().describe(table), charset, guess);
}

Fields describe(const Quor::TISDBTTable& table, const Charset& charset) {
    CodingGuess guess;
    return describe(table, charset, guess);
}

Field describe(const Quor::TISDBTDescriptor& descriptor, const Charset& charset) {
    CodingGuess guess;
    return std::move(decoded({Catalogue::instance().describe(descriptor)}, charset, guess).front());
}

} // namespace inspect
