#include "multiplex/CarouselStreams.h"

#include "describing/FieldLookup.h"

#include <algorithm>

namespace inspect {

namespace {

/// What the descriptors of a tag hold that the receiver skips.
std::vector<std::vector<std::uint8_t>> skipped(const Fields& fields, std::int64_t descriptorTag) {
    std::vector<std::vector<std::uint8_t>> bodies;
    for (const Field& each : elements(fields, "unknown_descriptors")) {
        const Field* const field = find(inner(each), "bytes");
        const auto* const body = field == nullptr ? nullptr : std::get_if<Bytes>(&field->value);
        if (numberIn(inner(each), "descriptor_tag") == descriptorTag && body != nullptr) {
            bodies.push_back(body->bytes);
        }
    }
    return bodies;
}

std::uint16_t wordAt(const std::vector<std::uint8_t>& bytes, std::size_t at) {
    return static_cast<std::uint16_t>(bytes[at] << 8U | bytes[at + 1]);
}

const Component* associated(const Service& service, std::uint16_t tag) {
    const Component* byComponentTag = nullptr;
    for (const ProgramMap& pmt : service.programMaps) {
        for (const Component& component : pmt.components) {
            const std::vector<std::uint16_t> tags = associationTagsOf(component);
            if (std::find(tags.begin(), tags.end(), tag) != tags.end()) {
                return &component;
            }
            if (byComponentTag == nullptr && component.tag == (tag & 0xFFU)) {
                byComponentTag = &component;
            }
        }
    }
    return byComponentTag;
}

void append(std::vector<CarouselStream>& found, Pid pid, const std::vector<TransportStream>& streams) {
    for (const TransportStream& stream : streams) {
        for (const Service& service : stream.services) {
            for (const ProgramMap& pmt : service.programMaps) {
                for (const Component& component : pmt.components) {
                    if (component.pid == pid) {
                        std::optional<std::uint8_t> tag;
                        if (component.tag) {
                            tag = static_cast<std::uint8_t>(*component.tag);
                        }
                        found.push_back({service.id, tag, associationTagsOf(component)});
                    }
                }
            }
        }
    }
}

} // namespace

std::vector<std::uint16_t> associationTagsOf(const Component& component) {
    constexpr std::int64_t ASSOCIATION_TAG = 0x14;
    std::vector<std::uint16_t> tags;
    for (const std::vector<std::uint8_t>& body : skipped(*component.fields, ASSOCIATION_TAG)) {
        if (body.size() > 1) {
            tags.push_back(wordAt(body, 0));
        }
    }
    return tags;
}

std::vector<DeferredTags> deferredTagsOf(const Fields& programMap) {
    constexpr std::int64_t DEFERRED_ASSOCIATION_TAGS = 0x15;
    constexpr std::size_t BEHIND_TAGS = 4;
    std::vector<DeferredTags> found;
    for (const std::vector<std::uint8_t>& body : skipped(programMap, DEFERRED_ASSOCIATION_TAGS)) {
        const std::size_t size = body.empty() ? 0 : body[0] - body[0] % 2U; // of the tags, in bytes
        if (body.empty() || body.size() < 1U + body[0] + BEHIND_TAGS) {
            continue;
        }
        const std::size_t behind = 1U + body[0];
        DeferredTags deferred{{}, wordAt(body, behind), wordAt(body, behind + 2)};
        for (std::size_t at = 1; at <= size; at += 2) {
            deferred.tags.push_back(wordAt(body, at));
        }
        found.push_back(std::move(deferred));
    }
    return found;
}

const Component* associated(const Multiplex& multiplex, const DeferredTags& deferred, std::uint16_t tag) {
    const auto in = [&](const std::vector<TransportStream>& streams) -> const Component* {
        for (const TransportStream& stream : streams) {
            for (const Service& service : stream.services) {
                if (stream.id == deferred.transportStream && service.id == deferred.service) {
                    return associated(service, tag);
                }
            }
        }
        return nullptr;
    };
    const Component* found = in(multiplex.unlisted());
    for (const Network& network : multiplex.networks()) {
        found = found == nullptr ? in(network.streams) : found;
    }
    return found;
}

std::vector<CarouselStream> streamsOn(Pid pid, const Multiplex& multiplex) {
    std::vector<CarouselStream> found;
    for (const Network& network : multiplex.networks()) {
        append(found, pid, network.streams);
    }
    append(found, pid, multiplex.unlisted());
    return found;
}

} // namespace inspect
