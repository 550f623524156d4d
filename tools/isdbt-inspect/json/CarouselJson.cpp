#include "json/CarouselJson.h"

#include "describing/Conversion.h"
#include "json/FieldJson.h"
#include "json/JsonValues.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <utility>

namespace inspect {

namespace {

using Json = nlohmann::ordered_json;

// In the order of their enumerators.
constexpr const char* REFUSALS[] = {
    "truncated",       "table_id",     "section_length",  "crc_32",         "protocol",
    "location",        "block_number", "block_length",    "block_changed",  "block_size",
    "announced_twice", "compression",  "inflation",       "original_size",  "object_message",
    "message_size",    "object_key",   "event_count",     "carousel_limit", "group_limit",
    "module_limit",    "memory_limit", "inflation_limit", "object_limit",   "entry_limit"};
constexpr const char* MODULE_STATES[] = {"unannounced", "incomplete",     "complete",      "bad_block_size",
                                         "too_large",   "inflate_failed", "inflate_limit", "original_size"};
constexpr const char* ENTRY_STATES[] = {"complete",       "module_incomplete", "module_refused", "module_not_announced",
                                        "no_such_object", "other_carousel",    "unknown_kind",   "loop",
                                        "too_deep"};
constexpr const char* NAMINGS[] = {"good", "unsafe", "duplicate", "none"};
constexpr const char* KINDS[] = {"file", "directory", "service_gateway", "stream", "stream_event", "module", "unknown"};
constexpr const char* TYPES[] = {"object", "data", "unknown"};

/// What is said of when something came.
struct Timing {
    bool known;                 ///< whether the stream has a clock
    std::optional<double> step; ///< in seconds, in which it is said of each block; nothing when it is not
};

template <std::size_t Size, class Value> const char* nameOf(const char* const (&names)[Size], Value value) {
    return names[static_cast<std::size_t>(value)];
}

Json refusalJson(const dsmcc::Refusal& refusal) {
    return {{"refusal", nameOf(REFUSALS, refusal.kind)}, {"byte", refusal.at}, {"text", refusal.text}};
}

Json refusalsJson(const std::vector<dsmcc::Refusal>& refusals) {
    Json array = Json::array();
    std::transform(refusals.begin(), refusals.end(), std::back_inserter(array), refusalJson);
    return array;
}

Json repetitionJson(const dsmcc::Repetition& repetition, const Timing& timing) {
    const auto when = [&](double seconds, std::uint64_t least) {
        return timing.known && repetition.count >= least ? measured(seconds) : Json();
    };
    return {{"count", repetition.count},
            {"first", when(repetition.first, 1)},
            {"last", when(repetition.last, 1)},
            {"shortest", when(repetition.shortest, 2)},
            {"longest", when(repetition.longest, 2)}};
}

Json textJson(const dsmcc::ModuleInfo& info, std::uint8_t tag) {
    return info.descriptor(tag) == nullptr ? Json() : Json(shownName(info.text(tag)));
}

/// Which blocks came in each step in which any did.
Json arrivalsJson(const std::vector<dsmcc::Arrival>& arrivals, double step) {
    std::map<std::uint32_t, Ranges> blocks;
    for (const dsmcc::Arrival& each : arrivals) {
        blocks[static_cast<std::uint32_t>(std::max(each.seconds, 0.0) / step)].add(each.block);
    }
    Json gaps = Json::array();
    Json came = Json::array();
    std::uint32_t before = 0;
    for (const auto& [at, ranges] : blocks) {
        gaps.push_back(at - std::exchange(before, at));
        came.push_back(rangesJson(ranges));
    }
    return {{"gaps", std::move(gaps)}, {"blocks", std::move(came)}};
}

Json moduleJson(const dsmcc::Module& module, const Timing& timing) {
    const bool announced = module.state != dsmcc::ModuleState::Unannounced;
    Json object{{"module_id", module.id}, {"version", module.version}};
    object["state"] = nameOf(MODULE_STATES, module.state);
    object["size"] = announced ? Json(module.info.size) : Json();
    object["compressed"] = module.originalSize.has_value();
    object["original_size"] = orNull(module.originalSize);
    object["blocks"] = announced ? Json(module.blockCount) : Json();
    object["received"] = module.received();
    object["missing"] = Json::array();
    for (const auto& [first, last] : announced ? module.missing() : decltype(module.missing()){}) {
        object["missing"].push_back({{"first", first}, {"last", last}});
    }
    object["name"] = textJson(module.info, dsmcc::Descriptor::NAME);
    object["mime_type"] = textJson(module.info, dsmcc::Descriptor::TYPE);
    object["label"] = textJson(module.info, dsmcc::Descriptor::LABEL);
    object["whole_turns"] = std::max<std::uint64_t>(module.repetition.count, 1) - 1;
    object["turns"] = repetitionJson(module.repetition, timing);
    object["completed"] =
        timing.known && module.state == dsmcc::ModuleState::Complete ? measured(module.completed) : Json();
    object["refusals"] = refusalsJson(module.refusals);
    if (timing.step) {
        object["arrivals"] = timing.known ? arrivalsJson(module.arrivals, *timing.step) : Json();
    }
    return object;
}

Json modulesJson(const std::vector<const dsmcc::Module*>& modules, const Timing& timing) {
    Json array = Json::array();
    for (const dsmcc::Module* const module : modules) {
        array.push_back(moduleJson(*module, timing));
    }
    return array;
}

Json groupJson(const dsmcc::Group& group, const Timing& timing) {
    const dsmcc::DownloadInfoIndication* const dii = group.dii;
    Json object{{"transaction_id", dii == nullptr ? group.info->id : dii->transactionId}};
    object["came"] = repetitionJson(group.repetition, timing);
    object["version"] = dii == nullptr ? Json() : Json(dsmcc::versionOf(dii->transactionId));
    object["download_id"] = dii == nullptr ? Json() : Json(dii->downloadId);
    object["block_size"] = dii == nullptr ? Json() : Json(dii->blockSize);
    object["announced_size"] = group.info == nullptr ? Json() : Json(group.info->size);
    object["modules"] = modulesJson(group.modules, timing);
    object["refusals"] = refusalsJson(group.refusals);
    return object;
}

Json streamJson(const dsmcc::StreamInfo& stream) {
    Json object{{"description", shownName(stream.description)}, {"audio", stream.audio}};
    object["video"] = stream.video;
    object["data"] = stream.data;
    object["association_tags"] = Json::array();
    for (const dsmcc::Tap& tap : stream.taps) {
        object["association_tags"].push_back(tap.associationTag);
    }
    object["events"] = Json::array();
    for (const dsmcc::StreamEvent& event : stream.events) {
        object["events"].push_back({{"event_id", event.id}, {"name", shownName(event.name)}});
    }
    return object;
}

Json contentTypeOf(const dsmcc::Entry& entry) {
    if (entry.object != nullptr) {
        for (const dsmcc::Descriptor& each : entry.object->descriptors) {
            if (each.tag == dsmcc::Descriptor::CONTENT_TYPE) {
                return shownName(std::string(each.body.begin(), each.body.end()));
            }
        }
    }
    return {};
}

Json entryJson(const dsmcc::Entry& entry) {
    const bool named = entry.naming != dsmcc::Naming::None;
    Json object{{"path", named ? Json(shownName(entry.path)) : Json()}};
    object["path_hex"] = named ? hexJson({entry.path.begin(), entry.path.end()}) : Json();
    object["naming"] = nameOf(NAMINGS, entry.naming);
    object["kind"] = nameOf(KINDS, entry.kind);
    object["state"] = nameOf(ENTRY_STATES, entry.state);
    object["module_id"] = entry.moduleId;
    object["object_key"] = hexJson(entry.objectKey);
    object["size"] = orNull(entry.size);
    object["content_type"] = contentTypeOf(entry);
    object["stream"] = entry.object != nullptr && entry.object->stream ? streamJson(*entry.object->stream) : Json();
    return object;
}

Json dsiJson(const dsmcc::Carousel& carousel, const Timing& timing) {
    if (carousel.dsi == nullptr) {
        return {};
    }
    return {{"transaction_id", carousel.dsi->transactionId},
            {"version", dsmcc::versionOf(carousel.dsi->transactionId)},
            {"came", repetitionJson(carousel.repetition, timing)}};
}

Json carouselJson(const std::string& source, const CarouselReport& report, const Timing& timing) {
    const dsmcc::Carousel& carousel = report.carousel;
    Json object = lineObject("carousel", source);
    object["pid"] = report.pid;
    object["carousel_id"] = orNull(carousel.id);
    object["kind"] = nameOf(TYPES, carousel.type);
    object["dsi"] = dsiJson(carousel, timing);
    object["groups"] = Json::array();
    for (const dsmcc::Group& group : carousel.groups) {
        object["groups"].push_back(groupJson(group, timing));
    }
    object["unannounced"] = modulesJson(carousel.unannounced, timing);
    object["gateway"] = report.tree.gateway ? Json(nameOf(ENTRY_STATES, report.tree.gateway->state)) : Json();
    object["files"] = Json::array();
    for (const dsmcc::Entry& entry : report.tree.entries) {
        object["files"].push_back(entryJson(entry));
    }
    object["cut"] = report.tree.refusal ? Json(report.tree.refusal->text) : Json();
    return object;
}

Json pidJson(const std::string& source, const CarouselPid& pid) {
    Json object = lineObject("carousel_pid", source);
    object["pid"] = pid.pid;
    object["components"] = Json::array();
    for (const CarouselStream& stream : pid.streams) {
        object["components"].push_back({{"service_id", stream.service},
                                        {"component_tag", orNull(stream.componentTag)},
                                        {"association_tags", stream.associationTags}});
    }
    object["sections"] = pid.sections + pid.crcErrors;
    object["crc_errors"] = pid.crcErrors;
    object["refusals"] = Json::array();
    for (const CarouselRefusal& each : pid.refusals) {
        Json refusal = refusalJson(each.refusal);
        refusal["count"] = each.count;
        addPosition(refusal, each.first);
        object["refusals"].push_back(std::move(refusal));
    }
    return object;
}

} // namespace

std::string carouselLines(const std::string& source, const Summary& summary, std::optional<double> interim,
                          std::optional<double> step) {
    std::string lines;
    const auto add = [&](Json object) {
        addTime(object, summary.last);
        if (interim) {
            object["interim"] = measured(interim);
        }
        lines += jsonLine(object);
    };
    for (const CarouselPid& pid : summary.carousels) {
        add(pidJson(source, pid));
        for (const CarouselReport& report : pid.carousels) {
            add(carouselJson(source, report, {summary.seconds.has_value(), step}));
        }
    }
    return lines;
}

} // namespace inspect
