#include "describing/StandardReadings.h"

#include "describing/FieldLookup.h"
#include "describing/Readings.h"
#include "describing/TimeZone.h"
#include "naming/Names.h"
#include "sections/Bits.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

std::uint8_t takeByte(Bits& body) {
    return static_cast<std::uint8_t>(body.take(8));
}

Field takeIdentifier(std::string_view name, Bits& body, unsigned width) {
    return identifier(name, body.take32(width), static_cast<int>((width + 3) / 4));
}

Field takeBytes(std::string_view name, Bits& body, std::size_t count) {
    const std::vector<std::uint8_t> taken = body.takeBytes(count);
    return bytes(name, taken.data(), taken.size());
}

Field takeCountry(std::string_view name, Bits& body) {
    constexpr std::size_t LETTERS = 3;
    const std::vector<std::uint8_t> taken = body.takeBytes(LETTERS);
    return isoCode(name, std::string(taken.begin(), taken.end()));
}

/// Braces would copy it.
Fields only(Field field) {
    Fields fields;
    fields.push_back(std::move(field));
    return fields;
}

Fields readServices(Bits& body) {
    Fields services;
    while (body.left() != 0) {
        Field id = takeIdentifier("service_id", body, 16);
        services.push_back(
            object("", {std::move(id), takeIdentifier("service_type", body, 8).named(names::SERVICE_TYPE)}));
    }
    return only(list("services", std::move(services)));
}

/// Hours and minutes, in minutes.
Field takeOffset(std::string_view name, Bits& body, bool behind) {
    const std::uint32_t digits = body.take32(16);
    const std::optional<std::int32_t> minutes = bcdMinutes(digits);
    return minutes ? number(name, behind ? -*minutes : *minutes)
                         .in("min")
                         .reads(isoOffset(behind, static_cast<std::uint32_t>(60 * *minutes)))
                   : absent(name);
}

/// When an offset changes: by which clock is not certain.
Field takeTime(std::string_view name, Bits& body) {
    const std::optional<std::int32_t> taken = wireTime(body.take(40));
    return taken ? number(name, *taken).in("s").reads(TimeZone::clock(*taken)) : absent(name);
}

Fields readTimeOffsets(Bits& body) {
    Fields regions;
    while (body.left() != 0) {
        Field country = takeCountry("country_code", body);
        Field region = number("country_region_id", body.take32(6));
        body.take(1);
        const bool behind = body.take(1) != 0;
        Field offset = takeOffset("local_time_offset", body, behind);
        Field change = takeTime("time_of_change", body);
        regions.push_back(object("", {std::move(country), std::move(region), std::move(offset), std::move(change),
                                      takeOffset("next_time_offset", body, behind)}));
    }
    return only(list("regions", std::move(regions)));
}

Fields readCarousel(Bits& body) {
    constexpr std::uint32_t WITH_SERVICE_GATEWAY = 1;
    body.take(32);
    if (body.left() == 0) {
        return {}; // in the oldest form there was no more
    }
    const std::uint32_t format = body.take32(8);
    Fields fields{identifier("format_id", format, 2)};
    if (format == WITH_SERVICE_GATEWAY) {
        fields.push_back(number("module_version", body.take32(8)));
        fields.push_back(takeIdentifier("module_id", body, 16));
        fields.push_back(number("block_size", body.take32(16)).in("bytes"));
        fields.push_back(number("module_size", body.take32(32)).in("bytes"));
        fields.push_back(number("compression_method", body.take32(8)));
        fields.push_back(number("original_size", body.take32(32)).in("bytes"));
        fields.push_back(number("time_out", body.take32(8)).in("s"));
        fields.push_back(takeBytes("object_key_data", body, takeByte(body)));
    }
    return fields;
}

/// Behind the format and its fields.
Fields readPrivateData(Bits& body) {
    return readCarousel(body).empty() ? Fields{} : Fields{takeBytes("private_data", body, body.left())};
}

Field takeTicks(std::string_view name, Bits& body) {
    const std::uint64_t count = body.take(33);
    return number(name, static_cast<std::int64_t>(count))
        .in("x 1/90000 s")
        .reads(ticks(static_cast<std::uint32_t>(count >> 32U), static_cast<std::uint32_t>(count)));
}

Fields readTimeReferences(Bits& body) {
    body.take(8 + 7);
    Field clock = takeTicks("stc_reference", body);
    body.take(31);
    return {std::move(clock), takeTicks("npt_reference", body)};
}

Fields readEventTime(Bits& body) {
    body.take(16 + 31);
    return {takeTicks("event_npt", body)};
}

Fields readEncodeFormat(Bits& body) {
    body.take(2);
    return {code("video_encode_format", body.take32(4), names::VIDEO_ENCODE_FORMAT)};
}

Field takeIdentifiers(std::string_view name, Bits& body, std::size_t count) {
    Fields elements;
    for (; count != 0 && !body.failed(); --count) {
        elements.push_back(number("", body.take32(8) & 0x3FU));
    }
    return list(name, std::move(elements));
}

/// What a cell shows when it is chosen.
void takeLinkage(Fields& cell, Bits& body) {
    enum Linkage : std::uint8_t { Bouquet = 1, Service, OtherMosaic, Event };
    const std::uint8_t linkage = takeByte(body);
    cell.push_back(code("cell_linkage_info", linkage, names::MOSAIC_LINKAGE));
    if (linkage == Bouquet) {
        cell.push_back(takeIdentifier("bouquet_id", body, 16));
    } else if (linkage >= Service && linkage <= Event) {
        for (const char* const name : {"original_network_id", "transport_stream_id", "service_id"}) {
            cell.push_back(takeIdentifier(name, body, 16));
        }
    }
    if (linkage == Event) {
        cell.push_back(takeIdentifier("event_id", body, 16));
    }
}

Fields readMosaic(Bits& body) {
    Fields fields{flag("mosaic_entry_point", body.take(1) != 0)};
    fields.push_back(code("number_of_horizontal_cells", body.take32(3), names::MOSAIC_CELLS));
    body.take(1);
    fields.push_back(code("number_of_vertical_cells", body.take32(3), names::MOSAIC_CELLS));
    Fields cells;
    while (body.left() != 0 && !body.failed()) {
        Fields cell{number("logical_cell_id", body.take32(6))};
        body.take(7);
        cell.push_back(code("logical_cell_presentation_info", body.take32(3), names::MOSAIC_PRESENTATION));
        const std::size_t count = takeByte(body);
        cell.push_back(takeIdentifiers("elementary_cell_ids", body, count));
        takeLinkage(cell, body);
        cells.push_back(object("", std::move(cell)));
    }
    fields.push_back(list("cells", std::move(cells)));
    return fields;
}

/// What may be recorded of a component.
Field takeComponentControl(Bits& body) {
    constexpr std::uint32_t COPY_FREE = 0;
    Fields fields{takeIdentifier("component_tag", body, 8),
                  code("digital_recording_control_data", body.take32(2), names::DIGITAL_RECORDING_CONTROL)};
    const bool hasRate = body.take(1) != 0;
    body.take(1);
    const std::uint32_t type = body.take32(2);
    fields.push_back(code("copy_control_type", type, names::COPY_CONTROL_TYPE));
    const std::uint32_t analogue = body.take32(2);
    if (type != COPY_FREE) {
        fields.push_back(number("aps_control_data", analogue));
    }
    if (hasRate) {
        fields.push_back(number("maximum_bitrate", body.take32(8)).in("x 0.25 Mbit/s"));
    }
    return object("", std::move(fields));
}

Fields readCopyControl(Bits& body) {
    body.take(2);
    const bool hasRate = body.take(1) != 0;
    const bool hasComponents = body.take(1) != 0;
    body.take(4);
    body.takeBytes(hasRate ? 1 : 0);
    if (!hasComponents) {
        return {};
    }
    const std::vector<std::uint8_t> loop = body.takeBytes(takeByte(body));
    Bits left(loop.data(), loop.size());
    Fields components;
    while (left.left() != 0) {
        components.push_back(takeComponentControl(left));
    }
    if (left.failed()) {
        body.fail();
    }
    return only(list("components", std::move(components)));
}

Fields readCopyright(Bits& body) {
    Field identifier = takeIdentifier("copyright_identifier", body, 32);
    return {std::move(identifier), takeBytes("additional_copyright_info", body, body.left())};
}

Fields readTiming(Bits& body) {
    Fields fields;
    body.take(7);
    if (body.take(1) != 0) {
        const bool counts90kHz = body.take(1) != 0;
        body.take(7);
        fields.push_back(flag("90khz_flag", counts90kHz));
        if (!counts90kHz) {
            fields.push_back(number("n", body.take32(32)));
            fields.push_back(number("k", body.take32(32)));
        }
        fields.push_back(number("num_units_in_tick", body.take32(32)));
    }
    for (const char* const name :
         {"fixed_frame_rate_flag", "temporal_poc_flag", "picture_to_display_conversion_flag"}) {
        fields.push_back(flag(name, body.take(1) != 0));
    }
    body.take(5);
    return fields;
}

/// The receivers that a download is for.
Field takeCompatibility(Bits& body) {
    Fields items;
    body.take(16);
    for (std::uint32_t left = body.take32(16); left != 0 && !body.failed(); --left) {
        body.take(8);
        const std::vector<std::uint8_t> inner = body.takeBytes(takeByte(body));
        Bits item(inner.data(), inner.size());
        item.take(8);
        Field specifier = takeIdentifier("specifier_data", item, 24);
        Field model = takeIdentifier("model", item, 16);
        items.push_back(object("", {std::move(specifier), std::move(model), takeIdentifier("version", item, 16)}));
    }
    return list("compatibility", std::move(items));
}

Field takeModules(Bits& body) {
    Fields modules;
    for (std::uint32_t left = body.take32(16); left != 0 && !body.failed(); --left) {
        Field id = takeIdentifier("module_id", body, 16);
        modules.push_back(object("", {std::move(id), number("module_size", body.take32(32)).in("bytes")}));
        body.takeBytes(takeByte(body));
    }
    return list("modules", std::move(modules));
}

Fields readDownload(Bits& body) {
    Fields fields;
    body.take(2);
    const bool hasCompatibility = body.take(1) != 0;
    const bool hasModules = body.take(1) != 0;
    constexpr unsigned UP_TO_COMPONENT_TAG = 4 + 32 + 32 + 32 + 24 + 8;
    body.takeBytes(UP_TO_COMPONENT_TAG / 8);
    body.take(UP_TO_COMPONENT_TAG % 8);
    if (hasCompatibility) {
        fields.push_back(takeCompatibility(body));
    }
    if (hasModules) {
        fields.push_back(takeModules(body));
    }
    return fields;
}

/// Whether a body holds just what is read of it.
bool isWhole(Bits& body) {
    return !body.failed() && body.left() == 0;
}

bool hasOddServices(Bits& body) {
    const bool odd = body.left() % 2 != 0;
    readServices(body);
    return odd && isWhole(body);
}

bool isDataPiping(Bits& body) {
    constexpr std::uint32_t DATA_PIPING = 3;
    return body.take(16) == DATA_PIPING && body.left() >= 2;
}

bool isTransportStreamInformation(Bits& body) {
    body.take(8);
    const std::uint32_t nameLength = body.take32(6);
    const std::uint32_t types = body.take32(2);
    body.takeBytes(nameLength);
    for (std::uint32_t type = 0; type < types; ++type) {
        body.take(8);
        body.takeBytes(std::size_t{2} * takeByte(body));
    }
    return !body.failed();
}

bool isEmergency(Bits& body) {
    bool odd = false; // an area code has two bytes
    while (body.left() != 0) {
        body.take(24);
        const std::uint8_t size = takeByte(body);
        odd = odd || size % 2 != 0;
        body.takeBytes(size);
    }
    return !odd && !body.failed();
}

bool isMosaicOfUnlinkedCells(Bits& body) {
    bool unlinked = false;
    body.take(8);
    while (body.left() != 0) {
        constexpr unsigned IDENTIFIERS[] = {0, 2, 6, 6, 8}; // in bytes, by cell_linkage_info
        body.take(16);
        body.takeBytes(takeByte(body));
        const std::uint8_t linkage = takeByte(body);
        unlinked = unlinked || linkage == 0;
        body.takeBytes(linkage < std::size(IDENTIFIERS) ? IDENTIFIERS[linkage] : 0);
    }
    return unlinked && !body.failed();
}

bool isTiming(Bits& body) {
    readTiming(body);
    return isWhole(body);
}

bool isCopyControlOfComponents(Bits& body) {
    return !readCopyControl(body).empty() && isWhole(body);
}

/// A list that may have no entries.
template <std::size_t Before> bool hasNoEntries(Bits& body) {
    return body.left() == Before;
}

bool areSame(const Field& left, const Field& right) {
    const auto* const number = std::get_if<Number>(&left.value);
    const auto* const otherNumber = std::get_if<Number>(&right.value);
    const auto* const flag = std::get_if<bool>(&left.value);
    const auto* const otherFlag = std::get_if<bool>(&right.value);
    return (number != nullptr && otherNumber != nullptr && number->value == otherNumber->value) ||
           (flag != nullptr && otherFlag != nullptr && *flag == *otherFlag);
}

/// Whether the standard's fields are others, or have other values, than those of the receiver: some bytes read the
/// same.
bool differ(const Fields& fields, const Fields& standard) {
    return !std::all_of(standard.begin(), standard.end(), [&fields](const Field& each) {
        const Field* const same = find(fields, each.name);
        return same != nullptr && areSame(*same, each);
    });
}

/// The fields of these names, each with a mark, if they are there.
void mark(Fields& fields, const OtherReading& reading) {
    for (Field& field : fields) {
        if (std::find(reading.fields.begin(), reading.fields.end(), field.name) != reading.fields.end()) {
            field.agreement = reading.agreement;
        }
    }
}

} // namespace

const std::vector<OtherReading>& otherReadings() {
    static const std::vector<OtherReading> READINGS{
        {"service_list_descriptor",
         {"items"},
         "three bytes for each service: a service_id of 16 bits and a service_type",
         "takes two bytes for each, of which the first is the service_id",
         Agreement::Otherwise,
         readServices},
        {"local_time_offset_descriptor",
         {"items"},
         "hours and minutes in decimal digits, an entry for each region of a country, and the change to come",
         "counts ten in the digits as 160, keeps the last entry of a country, and leaves out the change",
         Agreement::Otherwise,
         readTimeOffsets},
        {"carousel_identifier_descriptor",
         {"format_id", "module_version", "module_id", "block_size", "module_size", "compression_method",
          "original_size", "time_out", "object_key_length", "object_key_data"},
         "a format_id behind the carousel_id, and in format 1 where the service gateway is",
         "does not read them: they are 0",
         Agreement::Unread,
         readCarousel},
        {"carousel_identifier_descriptor",
         {"private_data_size", "private_data"},
         "what is behind these",
         "takes all behind the carousel_id for it",
         Agreement::Otherwise,
         readPrivateData},
        {"npt_reference_descriptor",
         {"stc_reference_h", "stc_reference_l", "npt_reference_h", "npt_reference_l"},
         "two times of 33 bits",
         "has the first bit of each apart",
         Agreement::InPieces,
         readTimeReferences},
        {"stream_event_descriptor",
         {"event_npt_h", "event_npt_l"},
         "a time of 33 bits",
         "has its first bit apart",
         Agreement::InPieces,
         readEventTime},
        {"video_decode_control_descriptor",
         {"video_encode_format"},
         "a code of four bits",
         "leaves out the bit of value 4",
         Agreement::Otherwise,
         readEncodeFormat},
        {"mosaic_descriptor",
         {"number_of_horizontal_cells", "number_of_vertical_cells", "cells"},
         "counts of three bits, and all the cells that follow",
         "takes two bits of each count, and no more cells than they say",
         Agreement::Otherwise,
         readMosaic},
        {"digital_copy_control_descriptor",
         {"items"},
         "a component_tag before what is allowed of a component",
         "takes the component_tag for the first byte of that",
         Agreement::Otherwise,
         readCopyControl},
        {"copyright_descriptor",
         {"hierarchical_level", "reference_pid"},
         "a copyright_identifier of 32 bits, and more of its owner's",
         "takes it for a hierarchical transmission descriptor",
         Agreement::Otherwise,
         readCopyright},
        {"avc_timing_and_hrd_descriptor",
         {"90khz_flag", "n", "k", "num_units_in_tick", "fixed_frame_rate_flag", "temporal_poc_flag",
          "picture_to_display_conversion_flag"},
         "N and K when the 90kHz_flag is clear, and the last flags behind num_units_in_tick",
         "takes N and K when it is set, and the flags from the first bits of num_units_in_tick",
         Agreement::Otherwise,
         readTiming},
        {"download_content_descriptor",
         {"compatibility_descriptor", "modules"},
         "model, version and module_id of 16 bits, the high byte first",
         "shifts the first byte of model and version by the second, and takes the low byte of module_id first",
         Agreement::Otherwise,
         readDownload},
    };
    return READINGS;
}

const std::vector<RightRefused>& rightRefused() {
    static const std::vector<RightRefused> REFUSED{
        {"service_list_descriptor", "it looks for services of two bytes, and the length is odd", hasOddServices},
        {"transport_protocol_descriptor", "it has no data piping (protocol_id 3)", isDataPiping},
        {"ts_information_descriptor", "it wants eight bytes, a name, and two more bytes in each transmission type",
         isTransportStreamInformation},
        {"emergency_information_descriptor", "it wants an area code for each service", isEmergency},
        {"mosaic_descriptor", "it refuses cells that are linked to nothing", isMosaicOfUnlinkedCells},
        {"avc_timing_and_hrd_descriptor", "it looks for N and K where there are none", isTiming},
        {"digital_copy_control_descriptor", "it takes the component_tag for what is allowed of a component",
         isCopyControlOfComponents},
        {"terrestrial_delivery_system_descriptor", "it wants a frequency", hasNoEntries<2>},
        {"partial_reception_descriptor", "it wants a service", hasNoEntries<0>},
        {"country_availability_descriptor", "it wants a country", hasNoEntries<1>},
        {"prefetch_descriptor", "it wants a label", hasNoEntries<1>},
        {"dii_location_descriptor", "it wants a location", hasNoEntries<1>},
        {"application_name_descriptor", "it wants a name", hasNoEntries<0>},
    };
    return REFUSED;
}

std::string_view refusedBecause(std::string_view descriptor, const std::vector<std::uint8_t>& body) {
    for (const RightRefused& each : rightRefused()) {
        Bits bits(body.data(), body.size());
        if (each.descriptor == descriptor && each.isRight(bits)) {
            return each.because;
        }
    }
    return {};
}

void addStandardReading(std::string_view descriptor, const std::uint8_t* wire, Fields& fields) {
    constexpr std::size_t HEADER = 2;
    Fields standard;
    bool fits = true;
    for (const OtherReading& reading : otherReadings()) {
        Bits body(wire + HEADER, wire[1]);
        if (reading.descriptor != descriptor) {
            continue;
        }
        Fields read = reading.read(body);
        const bool said = body.failed() || reading.agreement == Agreement::Unread || differ(fields, read);
        fits = fits && !body.failed();
        if (said) {
            mark(fields, reading);
        }
        if (said && !body.failed()) {
            std::move(read.begin(), read.end(), std::back_inserter(standard));
        }
    }
    if (!fits) {
        fields.push_back(absent(STANDARD).reads("the bytes are not as the standard has them"));
    } else if (!standard.empty()) {
        fields.push_back(object(STANDARD, std::move(standard)));
    }
}

Fields standardFirst(const Fields& fields) {
    Fields ordered;
    Fields others;
    std::size_t place = fields.size(); // where the standard's go: to the first that they replace
    for (const Field& field : fields) {
        if (field.agreement != Agreement::Usual) {
            place = std::min(place, ordered.size());
        }
        if (field.agreement == Agreement::Otherwise) {
            others.push_back(field);
            others.back().agreement = Agreement::Usual;
        } else if (field.name == STANDARD && !std::holds_alternative<Absent>(field.value)) {
            const Fields& standard = std::get<Object>(field.value).fields;
            ordered.insert(ordered.begin() + static_cast<std::ptrdiff_t>(place), standard.begin(), standard.end());
        } else if (field.agreement == Agreement::Usual) {
            ordered.push_back(field);
        }
    }
    if (!others.empty()) {
        ordered.push_back(object(RECEIVER, std::move(others)));
    }
    return ordered;
}

} // namespace inspect
