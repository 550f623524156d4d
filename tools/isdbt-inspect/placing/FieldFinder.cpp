#include "placing/FieldFinder.h"

#include "TISDBTTable.h"
#include "describing/Catalogue.h"
#include "placing/Deductions.h"
#include "placing/FieldChanges.h"
#include "tables/TableKinds.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>

namespace inspect {

namespace {

constexpr std::size_t CRC_SIZE = 4;
constexpr std::size_t VERSION_AT = 5; // in the long header

/// As many places as there are fields, at all depths.
FieldPlaces unknownPlaces(const Fields& fields) {
    FieldPlaces places(fields.size());
    for (std::size_t at = 0; at < fields.size(); ++at) {
        if (const auto* const object = std::get_if<Object>(&fields[at].value)) {
            places[at].parts = unknownPlaces(object->fields);
        } else if (const auto* const list = std::get_if<List>(&fields[at].value)) {
            places[at].parts = unknownPlaces(list->elements);
        }
    }
    return places;
}

/// Changes a section byte by byte, and looks what becomes of its fields.
class Attempts {
public:
    /// @param most bytes of sections
    Attempts(const std::vector<std::uint8_t>& section, const Fields& fields, std::uint64_t most)
        : m_section(section), m_fields(fields), m_most(most), m_places(unknownPlaces(fields)), m_guesses(m_places) {}

    /// None when there were too many.
    FieldPlaces make() {
        const TableKind* const kind = tableKind(m_section.front());
        if (kind == nullptr) {
            return std::move(m_places);
        }
        for (std::size_t at = 0; at + CRC_SIZE < m_section.size(); ++at) {
            if (m_bytes > m_most) {
                return {};
            }
            change(*kind, at);
        }
        deducePlaces(m_section, m_fields, m_places, m_guesses);
        return std::move(m_places);
    }

    std::uint64_t bytes() const { return m_bytes; } ///< of all the sections that were tried

private:
    /// All bits at once, and where that makes another section of it, each by itself.
    void change(const TableKind& kind, std::size_t at) {
        constexpr std::uint8_t ALL = 0xFF;
        const std::optional<Fields> fields = fieldsWith(kind, at, ALL);
        FieldChanges changes;
        if (fields && findChanges(m_fields, *fields, m_places, changes)) {
            for (const FieldChanges::Value& value : changes.values) {
                value.place->bytes.add(at);
            }
            return;
        }
        std::map<FieldPlace*, unsigned> bits;
        for (unsigned bit = 1; bit < ALL; bit <<= 1U) {
            changeBit(kind, at, static_cast<std::uint8_t>(bit), bits);
        }
        for (const auto& [place, count] : bits) {
            if (count >= ENOUGH) {
                place->bytes.add(at);
            }
        }
    }

    /// One bit may make a section alike by chance, where an entry comes to be called like another. What agrees with its
    /// bit is believed, and what is read otherwise, such as a time, when several bits say so.
    void changeBit(const TableKind& kind, std::size_t at, std::uint8_t bit, std::map<FieldPlace*, unsigned>& bits) {
        const std::optional<Fields> fields = fieldsWith(kind, at, bit);
        FieldChanges changes;
        if (!fields) {
            return;
        }
        if (!findChanges(m_fields, *fields, m_places, changes)) {
            guessPlaces(m_fields, *fields, at, m_section[at], bit, m_guesses);
            return;
        }
        for (const auto& [before, after, place] : changes.values) {
            bits[place] += agrees(*before, *after, m_section[at], bit) ? ENOUGH : 1;
        }
    }

    /// Nothing when the library does not take the section. It does not look at the CRC_32.
    std::optional<Fields> fieldsWith(const TableKind& kind, std::size_t at, std::uint8_t bits) {
        m_bytes += m_section.size();
        std::vector<std::uint8_t> section = m_section;
        section[at] ^= bits;
        QUOR_U16 errorCode = Quor::TISDBTTable::ERROR_OK;
        const std::unique_ptr<Quor::TISDBTTable> table(
            kind.parse(section.data(), static_cast<QUOR_U32>(section.size()), &errorCode));
        return table == nullptr ? std::nullopt : std::optional(Catalogue::instance().describe(*table));
    }

    static constexpr unsigned ENOUGH = 3;

    const std::vector<std::uint8_t>& m_section;
    const Fields& m_fields;
    std::uint64_t m_most;
    FieldPlaces m_places;
    FieldPlaces m_guesses;
    std::uint64_t m_bytes = 0;
};

} // namespace

FieldPlaces FieldFinder::find(const Place& place, const std::vector<std::uint8_t>& section, const Fields& fields,
                              std::uint64_t most) {
    if (Found* const before = m_found.find(place); before != nullptr && isLike(*before, section, fields)) {
        return before->places;
    }
    if (m_tried + section.size() * section.size() > most) {
        return {};
    }
    Attempts attempts(section, fields, most - m_tried);
    FieldPlaces places = attempts.make();
    m_tried += attempts.bytes();
    if (!places.empty()) {
        m_found.put(place, {section, fields, places});
    }
    return places;
}

/// Whether the bytes that are others are those of the values that are others, and of no more than these.
bool FieldFinder::isLike(Found& before, const std::vector<std::uint8_t>& section, const Fields& fields) {
    FieldChanges changes;
    if (before.section.size() != section.size() || !findChanges(before.fields, fields, before.places, changes) ||
        changes.moved) {
        return false;
    }
    std::vector<std::size_t> others;
    for (std::size_t at = 0; at + CRC_SIZE < section.size(); ++at) {
        if (before.section[at] != section[at] && at != VERSION_AT) {
            others.push_back(at);
        }
    }
    const auto stands = [](const FieldChanges::Value& value, std::size_t at) { return value.place->bytes.has(at); };
    const auto& values = changes.values;
    return std::all_of(others.begin(), others.end(),
                       [&](std::size_t at) {
                           return std::any_of(values.begin(), values.end(),
                                              [&](const auto& value) { return stands(value, at); });
                       }) &&
           std::all_of(values.begin(), values.end(), [&](const auto& value) {
               return std::any_of(others.begin(), others.end(), [&](std::size_t at) { return stands(value, at); });
           });
}

} // namespace inspect
