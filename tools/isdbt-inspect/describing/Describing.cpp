#include "describing/Describing.h"

#include "describing/Catalogue.h"

namespace inspect {

namespace {

TimeZone zoneBy(const Conventions& conventions, Coding told) {
    return conventions.zone.isAssumed() && told == Coding::Japan ? TimeZone::ofJapan() : conventions.zone;
}

/// Adds what texts and times say to people.
class Interpreter {
public:
    Interpreter(const Conventions& conventions, Coding told)
        : m_conventions(conventions), m_told(told), m_zone(zoneBy(conventions, told)) {}

    void interpret(Fields& fields) const {
        for (Field& field : fields) {
            if (field.isTime) {
                const auto time = static_cast<std::int32_t>(std::get<Number>(field.value).value);
                field.reading = m_zone.read(time);
                field.instant = m_zone.iso(time);
            } else if (auto* const text = std::get_if<Text>(&field.value)) {
                decode(field, *text);
            } else if (auto* const object = std::get_if<Object>(&field.value)) {
                interpret(object->fields);
            } else if (auto* const list = std::get_if<List>(&field.value)) {
                interpret(list->elements);
            }
        }
    }

private:
    void decode(Field& field, Text& text) const {
        if (text.kind != Text::IsoCode) {
            ShownText shown = text.kind == Text::Name ? m_conventions.charset.decode(text.raw, m_told)
                                                      : m_conventions.charset.decodeAddress(text.raw);
            text.decoded = std::move(shown.text);
            field.reading = std::move(shown.remark);
        }
    }

    const Conventions& m_conventions;
    Coding m_told;
    TimeZone m_zone;
};

/// What the fields tell of the coding holds for themselves, too.
Fields interpreted(Fields fields, const Conventions& conventions, CodingGuess& guess) {
    guess.learn(fields);
    Interpreter(conventions, guess.coding()).interpret(fields);
    return fields;
}

} // namespace

TimeZone zoneOf(const Conventions& conventions, const CodingGuess& guess) {
    return zoneBy(conventions, guess.coding());
}

Fields describe(const Quor::TISDBTTable& table, const Conventions& conventions, CodingGuess& guess) {
    return interpreted(Catalogue::instance().describe(table), conventions, guess);
}

Fields describe(const Quor::TISDBTTable& table, const Conventions& conventions) {
    CodingGuess guess;
    return describe(table, conventions, guess);
}

Field describe(const Quor::TISDBTDescriptor& descriptor, const Conventions& conventions) {
    CodingGuess guess;
    return std::move(interpreted({Catalogue::instance().describe(descriptor)}, conventions, guess).front());
}

} // namespace inspect
