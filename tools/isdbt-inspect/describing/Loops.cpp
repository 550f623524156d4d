#include "describing/Loops.h"

#include <map>

namespace inspect {

namespace {

constexpr CodeName SKIPPED_TAGS[] = {
    {0x42, "stuffing"},
};

void appendUnknownOf(Fields& fields, const DescriptorLoop& loop) {
    Fields unknown;
    for (const RawDescriptor& each : loop.descriptors) {
        if (each.kind == nullptr) {
            unknown.push_back(object("", {identifier("descriptor_tag", each.tag, 2).named(SKIPPED_TAGS),
                                          number("length", each.length.value_or(0)).in("bytes"),
                                          bytes("bytes", each.body.data(), each.body.size())}));
        }
    }
    if (!unknown.empty()) {
        fields.push_back(list("unknown_descriptors", std::move(unknown)));
    }
}

void appendUnknownToEach(Field& entries, const std::vector<const DescriptorLoop*>& loops) {
    Fields& elements = std::get<List>(entries.value).elements;
    for (std::size_t at = 0; at < elements.size() && at < loops.size(); ++at) {
        appendUnknownOf(std::get<Object>(elements[at].value).fields, *loops[at]);
    }
}

} // namespace

Loops::Loops(const Quor::TISDBTTable& table) : m_loops(descriptorLoops(table.getData(), table.getDataLength())) {}

void Loops::appendUnknown(Fields& fields) const {
    for (const DescriptorLoop& loop : m_loops) {
        if (!loop.key) {
            appendUnknownOf(fields, loop);
        }
    }
}

void Loops::appendUnknownInOrder(Field& entries) const {
    std::vector<const DescriptorLoop*> loops;
    for (const DescriptorLoop& loop : m_loops) {
        if (loop.key) {
            loops.push_back(&loop);
        }
    }
    appendUnknownToEach(entries, loops);
}

void Loops::appendUnknownByKey(Field& entries) const {
    std::map<std::uint64_t, const DescriptorLoop*> byKey;
    for (const DescriptorLoop& loop : m_loops) {
        if (loop.key) {
            byKey[*loop.key] = &loop;
        }
    }
    std::vector<const DescriptorLoop*> loops;
    loops.reserve(byKey.size());
    for (const auto& [key, loop] : byKey) {
        loops.push_back(loop);
    }
    appendUnknownToEach(entries, loops);
}

} // namespace inspect
