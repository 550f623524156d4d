#include "placing/Deductions.h"

#include "walking/DescriptorLoops.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace inspect {

namespace {

constexpr const char* DESCRIPTOR_TAG = "descriptor_tag";

/// What texts and bytes have on the wire; nothing for others.
std::optional<std::string_view> wireOf(const Field& field) {
    if (const auto* const text = std::get_if<Text>(&field.value)) {
        return text->raw;
    }
    const auto* const bytes = std::get_if<Bytes>(&field.value);
    return bytes == nullptr ? std::nullopt
                            : std::optional(std::string_view(reinterpret_cast<const char*>(bytes->bytes.data()),
                                                             bytes->bytes.size()));
}

bool differsInOneByte(std::string_view before, std::string_view after, std::uint8_t bit) {
    const auto [one, other] = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    return one != before.end() && other != after.end() &&
           (static_cast<std::uint8_t>(*one) ^ static_cast<std::uint8_t>(*other)) == bit &&
           std::equal(one + 1, before.end(), other + 1, after.end());
}

bool isPowerOfTwo(std::int64_t number) {
    return number > 0 && (number & (number - 1)) == 0;
}

/// Whether a byte has the whole number in its bits, from the one on that the change of the number tells.
bool holds(std::int64_t before, std::int64_t after, std::uint8_t byte, std::uint8_t bit) {
    const std::int64_t change = before ^ after;
    if (before < 0 || before > 0xFF || change > bit) {
        return false;
    }
    std::int64_t width = 1;
    while (width <= before) {
        width *= 2;
    }
    return (byte / (bit / change) & (width - 1)) == before;
}

bool mayStand(const Field& before, const Field& after, std::uint8_t byte, std::uint8_t bit) {
    const auto* const number = std::get_if<Number>(&before.value);
    return agrees(before, after, byte, bit) &&
           (number == nullptr || holds(number->value, std::get<Number>(after.value).value, byte, bit));
}

/// The field that is the same one; null when there is none.
const Field* sameAs(const Field& before, std::size_t index, const Fields& after) {
    const auto isSame = [&before](const Field& each) {
        return each.name == before.name && each.value.index() == before.value.index();
    };
    if (before.name.empty()) {
        return index < after.size() && isSame(after[index]) ? &after[index] : nullptr;
    }
    const auto same = std::find_if(after.begin(), after.end(), isSame);
    return same == after.end() ? nullptr : &*same;
}

/// Of a text that other fields are read from, too, not each byte can be changed alone: but all of it stands together.
/// @return whether it is known where
bool completeText(std::string_view section, std::string_view text, FieldPlace& place) {
    if (place.bytes.all().empty()) {
        return false;
    }
    const std::size_t first = place.bytes.all().front().first;
    const std::size_t last = place.bytes.all().back().last;
    std::vector<std::size_t> begins;
    for (std::size_t begin = last + 1 - std::min(last + 1, text.size()); begin <= first; ++begin) {
        if (section.substr(begin, text.size()) == text) {
            begins.push_back(begin);
        }
    }
    if (begins.size() != 1) {
        return false;
    }
    place.bytes = {};
    for (std::size_t at = begins[0]; at < begins[0] + text.size(); ++at) {
        place.bytes.add(at);
    }
    return true;
}

/// A number behind a byte of zeros may have begun there.
bool isSure(const std::vector<std::uint8_t>& section, const Field& field, const FieldPlace& guess) {
    const auto& ranges = guess.bytes.all();
    const bool isOfOneByte = ranges.size() == 1 && ranges[0].first == ranges[0].last;
    const bool isNumber = std::holds_alternative<Number>(field.value);
    return isOfOneByte && !(isNumber && (ranges[0].first == 0 || section[ranges[0].first - 1] == 0));
}

/// Of a value that no change told of, what the guess tells.
void deduce(const std::vector<std::uint8_t>& section, const Field& field, FieldPlace& place, FieldPlace& guess) {
    const std::string_view wire(reinterpret_cast<const char*>(section.data()), section.size());
    const std::optional<std::string_view> text = wireOf(field);
    const bool isKnown = !place.bytes.all().empty();
    if (text && isKnown) {
        completeText(wire, *text, place);
    } else if (!isKnown && (text ? completeText(wire, *text, guess) : isSure(section, field, guess))) {
        place = guess;
    }
}

/// The first and the last byte of all the parts of a place.
std::optional<Ranges::Range> rangeOf(const FieldPlace& place) {
    std::optional<Ranges::Range> range;
    const auto add = [&range](const Ranges::Range& more) {
        range = range ? Ranges::Range{std::min(range->first, more.first), std::max(range->last, more.last)} : more;
    };
    std::for_each(place.bytes.all().begin(), place.bytes.all().end(), add);
    for (const FieldPlace& part : place.parts) {
        if (const std::optional<Ranges::Range> inner = rangeOf(part)) {
            add(*inner);
        }
    }
    return range;
}

/// A descriptor with another tag is another one, so that no change tells where its tag is: but those that stand there
/// do.
class Tags {
public:
    explicit Tags(const std::vector<std::uint8_t>& section)
        : m_loops(descriptorLoops(section.data(), section.size())) {}

    void place(const Fields& fields, FieldPlaces& places) const {
        for (std::size_t at = 0; at < fields.size(); ++at) {
            if (const auto* const object = std::get_if<Object>(&fields[at].value)) {
                place(object->fields, places[at].parts);
                placeTagOf(object->fields, places[at]);
            } else if (const auto* const list = std::get_if<List>(&fields[at].value)) {
                place(list->elements, places[at].parts);
            }
        }
    }

private:
    void placeTagOf(const Fields& fields, FieldPlace& descriptor) const {
        const auto tag =
            std::find_if(fields.begin(), fields.end(), [](const Field& field) { return field.name == DESCRIPTOR_TAG; });
        if (tag == fields.end()) {
            return;
        }
        FieldPlace& place = descriptor.parts[static_cast<std::size_t>(tag - fields.begin())];
        const std::optional<std::size_t> offset = offsetOf(std::get<Number>(tag->value).value, rangeOf(descriptor));
        if (place.bytes.all().empty() && offset) {
            place.bytes.add(*offset);
        }
    }

    /// @param range of what else is known of it; nothing when it must be the only one of its tag
    std::optional<std::size_t> offsetOf(std::int64_t tag, const std::optional<Ranges::Range>& range) const {
        std::optional<std::size_t> offset;
        for (const DescriptorLoop& loop : m_loops) {
            for (const RawDescriptor& each : loop.descriptors) {
                if (each.tag == tag &&
                    (!range || (each.offset <= range->first && range->last <= each.offset + 1 + each.body.size()))) {
                    if (offset) {
                        return std::nullopt;
                    }
                    offset = each.offset;
                }
            }
        }
        return offset;
    }

    std::vector<DescriptorLoop> m_loops;
};

} // namespace

bool agrees(const Field& before, const Field& after, std::uint8_t byte, std::uint8_t bit) {
    const bool isSet = (byte & bit) != 0;
    if (const auto* const flag = std::get_if<bool>(&before.value)) {
        return *flag != std::get<bool>(after.value) && *flag == isSet;
    }
    if (const auto* const number = std::get_if<Number>(&before.value)) {
        const std::int64_t change = number->value ^ std::get<Number>(after.value).value;
        return isPowerOfTwo(change) && ((number->value & change) != 0) == isSet;
    }
    const std::optional<std::string_view> wire = wireOf(before);
    return wire && differsInOneByte(*wire, *wireOf(after), bit);
}

void guessPlaces(const Fields& before, const Fields& after, std::size_t at, std::uint8_t byte, std::uint8_t bit,
                 FieldPlaces& guesses) {
    for (std::size_t index = 0; index < before.size(); ++index) {
        const Field* const same = sameAs(before[index], index, after);
        if (same == nullptr) {
            continue;
        }
        if (const auto* const object = std::get_if<Object>(&before[index].value)) {
            guessPlaces(object->fields, std::get<Object>(same->value).fields, at, byte, bit, guesses[index].parts);
        } else if (const auto* const list = std::get_if<List>(&before[index].value)) {
            guessPlaces(list->elements, std::get<List>(same->value).elements, at, byte, bit, guesses[index].parts);
        } else if (mayStand(before[index], *same, byte, bit)) {
            guesses[index].bytes.add(at);
        }
    }
}

void deducePlaces(const std::vector<std::uint8_t>& section, const Fields& fields, FieldPlaces& places,
                  FieldPlaces& guesses) {
    std::vector<FieldPlace*> guessed;
    forEachValue(fields, guesses, [&](const Field& /*field*/, FieldPlace& guess) { guessed.push_back(&guess); });
    auto guess = guessed.begin();
    forEachValue(fields, places,
                 [&](const Field& field, FieldPlace& place) { deduce(section, field, place, **guess++); });
    Tags(section).place(fields, places);
}

} // namespace inspect
