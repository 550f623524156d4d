#include "describing/CodingGuess.h"

#include "describing/FieldLookup.h"

#include <algorithm>

namespace inspect {

namespace {

// Networks of Japan, and those of Brazil, whose numbers are those of its stations' call signs.
constexpr std::int64_t FIRST_OF_JAPAN = 0x7000;
constexpr std::int64_t LAST_OF_JAPAN = 0x7FFF;
constexpr std::int64_t SATELLITE_OF_JAPAN = 0x0004;
constexpr std::int64_t LAST_OF_BRAZIL = 4999;

constexpr std::string_view LATIN_AMERICAN_CODES[] = {"por", "spa", "BRA"};
constexpr std::string_view JAPANESE_CODES[] = {"jpn", "JPN"};

template <std::size_t N> bool isOneOf(std::string_view code, const std::string_view (&codes)[N]) {
    return std::find(std::begin(codes), std::end(codes), code) != std::end(codes);
}

} // namespace

void CodingGuess::decide(Coding coding, Certainty certainty) {
    if (certainty >= m_certainty) {
        m_coding = coding;
        m_certainty = certainty;
    }
}

void CodingGuess::learnNetwork(const Fields& fields, bool isTerrestrial) {
    std::optional<std::int64_t> network = numberIn(fields, "original_network_id");
    network = network ? network : numberIn(fields, "network_id");
    if (!network) {
        return;
    }
    if (*network >= FIRST_OF_JAPAN && *network <= LAST_OF_JAPAN) {
        decide(Coding::Japan, Certainty::Network);
    } else if (isTerrestrial && *network <= LAST_OF_BRAZIL) {
        decide(Coding::LatinAmerica, Certainty::Network);
    } else if (*network == SATELLITE_OF_JAPAN) {
        decide(Coding::Japan, Certainty::Language); // it might be a station of Brazil, too
    }
}

void CodingGuess::learnLanguages(const Fields& fields) {
    for (const Field& field : fields) {
        if (const auto* const text = std::get_if<Text>(&field.value); text != nullptr && text->kind == Text::IsoCode) {
            if (isOneOf(text->raw, JAPANESE_CODES)) {
                decide(Coding::Japan, Certainty::Language);
            } else if (isOneOf(text->raw, LATIN_AMERICAN_CODES)) {
                decide(Coding::LatinAmerica, Certainty::Language);
            }
        } else if (const auto* const object = std::get_if<Object>(&field.value)) {
            learnLanguages(object->fields);
        } else if (const auto* const list = std::get_if<List>(&field.value)) {
            learnLanguages(list->elements);
        }
    }
}

void CodingGuess::learn(const Fields& fields) {
    learnNetwork(fields, false);
    for (const Field& stream : elements(fields, "transport_streams")) {
        learnNetwork(inner(stream), find(inner(stream), "terrestrial_delivery_system_descriptor") != nullptr);
    }
    learnLanguages(fields);
}

} // namespace inspect
