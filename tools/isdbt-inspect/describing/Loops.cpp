#include "describing/Loops.h"

#include "describing/Kept.h"

#include <algorithm>
#include <map>

namespace inspect {

namespace {

Field describeRaw(const RawDescriptor& descriptor) {
    Field tag = identifier("descriptor_tag", descriptor.tag, 2).standsFor(descriptor.name);
    return object("", {std::move(tag), number("length", descriptor.length.value_or(0)).in("bytes"),
                       bytes("bytes", descriptor.body.data(), descriptor.body.size())});
}

/// Kinds of one name have one place in the library's objects.
bool isDisplaced(const DescriptorLoop& loop, const RawDescriptor& descriptor) {
    return std::any_of(loop.descriptors.begin(), loop.descriptors.end(), [&descriptor](const RawDescriptor& other) {
        return other.offset > descriptor.offset && other.kind != nullptr && other.kind->name == descriptor.kind->name;
    });
}

void appendUnlessEmpty(Fields& fields, std::string_view name, Fields elements, std::string_view remark) {
    if (!elements.empty()) {
        fields.push_back(list(name, std::move(elements)).reads(remark));
    }
}

void appendLeftOutOf(Fields& fields, const DescriptorLoop& loop) {
    Fields unknown;
    Fields displaced;
    for (const RawDescriptor& each : loop.descriptors) {
        if (each.kind == nullptr) {
            unknown.push_back(describeRaw(each));
        } else if (isDisplaced(loop, each)) {
            displaced.push_back(describeRaw(each));
        }
    }
    appendUnlessEmpty(fields, "unknown_descriptors", std::move(unknown), "skipped by the receiver");
    appendUnlessEmpty(fields, "displaced_descriptors", std::move(displaced), {});
}

Field withLeftOutOfEach(Field entries, const std::vector<const DescriptorLoop*>& loops) {
    Fields& elements = std::get<List>(entries.value).elements;
    for (std::size_t at = 0; at < elements.size() && at < loops.size(); ++at) {
        appendLeftOutOf(std::get<Object>(elements[at].value).fields, *loops[at]);
    }
    return entries;
}

} // namespace

Loops::Loops(const Quor::TISDBTTable& table) : m_loops(descriptorLoops(table.getData(), table.getDataLength())) {}

void Loops::appendLeftOut(Fields& fields) const {
    for (const DescriptorLoop& loop : m_loops) {
        if (!loop.key) {
            appendLeftOutOf(fields, loop);
        }
    }
}

Field Loops::withLeftOut(Field entries) const {
    std::vector<const DescriptorLoop*> loops;
    for (const DescriptorLoop& loop : m_loops) {
        if (loop.key) {
            loops.push_back(&loop);
        }
    }
    return withLeftOutOfEach(std::move(entries), loops);
}

Field Loops::withLeftOutByKey(Field entries, std::string_view key) const {
    std::map<std::uint64_t, const DescriptorLoop*> byKey;
    std::size_t sent = 0;
    for (const DescriptorLoop& loop : m_loops) {
        if (loop.key) {
            byKey[*loop.key] = &loop;
            ++sent;
        }
    }
    std::vector<const DescriptorLoop*> loops;
    loops.reserve(byKey.size());
    for (const auto& [each, loop] : byKey) {
        loops.push_back(loop);
    }
    return keptOf(withLeftOutOfEach(std::move(entries), loops), sent, key);
}

} // namespace inspect
