#include "Download.h"

#include "Inflation.h"
#include "Modules.h"
#include "Objects.h"
#include "Reader.h"

#include <algorithm>

namespace dsmcc {

namespace {

/// Bytes that a DII takes, with the announcements that its modules keep.
std::size_t costOf(const DownloadInfoIndication& dii) {
    std::size_t cost = sizeof dii + dii.privateData.size() + dii.compatibility.size();
    for (const ModuleInfo& info : dii.modules) {
        cost += 2 * (sizeof info + info.taps.size() * sizeof(Tap) + info.descriptors.size() * 2 * sizeof(Descriptor));
    }
    return cost;
}

} // namespace

std::size_t Download::memory() const {
    return sizeof *this + m_memory + m_announcements + m_objects * sizeof(Object) + m_slots.size() * sizeof(Slot);
}

void Download::heard(double seconds) {
    if (!m_heard) {
        m_first = seconds;
    }
    m_heard = true;
    m_last = seconds;
}

void Download::take(DownloadServerInitiate dsi, double seconds) {
    m_dsi = std::move(dsi);
    count(m_repetition, seconds);
}

std::optional<Refusal> Download::take(DownloadInfoIndication dii, double seconds) {
    const std::uint16_t identification = identificationOf(dii.transactionId);
    forgetWhatIsSilent(identification, seconds);
    if (m_groups.count(identification) == 0 && m_groups.size() >= m_limits.groups) {
        return Refusal{RefusalKind::GroupLimit, 0, "more than " + std::to_string(m_limits.groups) + " DIIs"};
    }
    AnnouncedGroup& group = m_groups[identification];
    m_announcements += costOf(dii);
    m_announcements -= group.repetition.count == 0 ? 0 : costOf(group.dii);
    group.dii = std::move(dii);
    count(group.repetition, seconds);
    announce(identification, group);
    for (const ModuleInfo& info : group.dii.modules) {
        const auto slot = m_slots.find(info.id);
        if (slot != m_slots.end() && slot->second.announced) {
            finishIfWhole(*slot->second.announced, seconds);
        }
    }
    return std::nullopt;
}

std::optional<Refusal> Download::take(const DownloadDataBlock& ddb, double seconds) {
    Slot* const slot = slotOf(ddb.moduleId);
    if (slot == nullptr) {
        return Refusal{RefusalKind::ModuleLimit, ddb.at, "more than " + std::to_string(m_limits.modules) + " modules"};
    }
    const bool current = slot->announced && slot->announced->version == ddb.moduleVersion;
    if (!current && !(slot->unannounced && slot->unannounced->version == ddb.moduleVersion)) {
        drop(slot->unannounced);
        slot->unannounced.emplace();
        slot->unannounced->id = ddb.moduleId;
        slot->unannounced->version = ddb.moduleVersion;
    }
    Module& module = current ? *slot->announced : *slot->unannounced;
    if (module.repetition.count == 0) {
        module.turnBlock = ddb.blockNumber;
    }
    if (module.turnBlock == ddb.blockNumber) {
        count(module.repetition, seconds);
    }
    if (!collects(module)) {
        return std::nullopt;
    }
    std::optional<Refusal> refusal = add(module, ddb, seconds);
    if (refusal) {
        note(module.refusals, *refusal);
    } else if (current) {
        finishIfWhole(module, seconds);
    }
    return refusal;
}

Group Download::group(std::uint16_t identification) const {
    Group group;
    const AnnouncedGroup& announced = m_groups.at(identification);
    group.dii = &announced.dii;
    group.repetition = announced.repetition;
    group.refusals = announced.refusals;
    std::set<std::uint16_t> listed;
    for (const ModuleInfo& info : announced.dii.modules) {
        const auto slot = m_slots.find(info.id);
        if (slot != m_slots.end() && slot->second.groups.count(identification) != 0 && listed.insert(info.id).second) {
            group.modules.push_back(&*slot->second.announced);
        }
    }
    return group;
}

Carousel Download::carousel() const {
    Carousel carousel;
    carousel.id = m_id;
    carousel.dsi = m_dsi ? &*m_dsi : nullptr;
    carousel.repetition = m_repetition;
    carousel.first = m_first;
    carousel.last = m_last;
    carousel.revision = m_revision;
    const bool object =
        m_dsi || std::any_of(m_groups.begin(), m_groups.end(), [](const auto& each) { return each.second.dii.object; });
    carousel.type = object ? CarouselType::Object : m_groups.empty() ? CarouselType::Unknown : CarouselType::Data;
    for (const auto& [id, slot] : m_slots) {
        if (slot.unannounced) {
            carousel.unannounced.push_back(&*slot.unannounced);
        }
    }
    return carousel;
}

/// Null when there are too many.
Download::Slot* Download::slotOf(std::uint16_t moduleId) {
    const auto found = m_slots.find(moduleId);
    if (found != m_slots.end()) {
        return &found->second;
    }
    return m_slots.size() < m_limits.modules ? &m_slots[moduleId] : nullptr;
}

void Download::announce(std::uint16_t identification, AnnouncedGroup& group) {
    group.refusals.clear();
    std::set<std::uint16_t> listed;
    for (const ModuleInfo& info : group.dii.modules) {
        if (!listed.insert(info.id).second) {
            note(group.refusals, {RefusalKind::AnnouncedTwice, 0,
                                  "module " + std::to_string(info.id) + " is announced twice in one DII"});
            continue;
        }
        Slot* const slot = slotOf(info.id);
        if (slot == nullptr) {
            note(group.refusals,
                 {RefusalKind::ModuleLimit, 0, "more than " + std::to_string(m_limits.modules) + " modules"});
            continue;
        }
        announce(identification, *slot, announced(group.dii, info, m_limits.memory), group.refusals);
    }
    withdraw(identification, listed);
}

void Download::announce(std::uint16_t identification, Slot& slot, Module fresh, std::vector<Refusal>& refusals) {
    if (slot.announced && sameModule(*slot.announced, fresh)) {
        slot.groups.insert(identification);
        slot.announced->info = std::move(fresh.info);
        return;
    }
    const std::size_t others = slot.groups.size() - slot.groups.count(identification);
    if (slot.announced && others != 0) {
        note(refusals, {RefusalKind::AnnouncedTwice, 0,
                        "module " + std::to_string(fresh.id) + " is announced otherwise by another DII"});
        slot.groups.erase(identification);
        return;
    }
    slot.groups.insert(identification);
    drop(slot.announced);
    if (slot.unannounced && slot.unannounced->version == fresh.version) {
        adopt(fresh, slot);
    }
    slot.announced = std::move(fresh);
    ++m_revision;
}

/// The blocks that came before their announcement.
void Download::adopt(Module& module, Slot& slot) {
    module.turnBlock = slot.unannounced->turnBlock;
    module.repetition = slot.unannounced->repetition;
    if (!collects(module)) {
        drop(slot.unannounced);
        return;
    }
    for (auto block = slot.unannounced->blocks.begin(); block != slot.unannounced->blocks.end();) {
        const std::size_t size = block->second.size();
        if (const auto refusal = mismatch(module, block->first, size, 0)) {
            note(module.refusals, *refusal);
            block = slot.unannounced->blocks.erase(block);
            m_memory -= costOfBlock(size);
        } else {
            ++block;
        }
    }
    module.blocks = std::move(slot.unannounced->blocks);
    module.arrivals = std::move(slot.unannounced->arrivals);
    module.arrivals.erase(std::remove_if(module.arrivals.begin(), module.arrivals.end(),
                                         [&](const Arrival& each) { return module.blocks.count(each.block) == 0; }),
                          module.arrivals.end());
    slot.unannounced.reset();
}

/// A group no longer announces its modules but those that are kept.
void Download::withdraw(std::uint16_t identification, const std::set<std::uint16_t>& kept) {
    for (auto at = m_slots.begin(); at != m_slots.end();) {
        Slot& slot = at->second;
        if (kept.count(at->first) == 0 && slot.groups.erase(identification) != 0 && slot.groups.empty()) {
            drop(slot.announced);
            ++m_revision;
        }
        at = slot.announced || slot.unannounced ? std::next(at) : m_slots.erase(at);
    }
}

/// Other groups, and blocks that nobody announces.
void Download::forgetWhatIsSilent(std::uint16_t identification, double seconds) {
    const auto silent = [&](const Repetition& repetition) { return repetition.last + m_limits.silence < seconds; };
    for (auto at = m_groups.begin(); at != m_groups.end();) {
        if (at->first != identification && silent(at->second.repetition)) {
            withdraw(at->first, {});
            m_announcements -= costOf(at->second.dii);
            at = m_groups.erase(at);
        } else {
            ++at;
        }
    }
    for (auto& [id, slot] : m_slots) {
        if (slot.unannounced && silent(slot.unannounced->repetition)) {
            drop(slot.unannounced);
        }
    }
}

std::optional<Refusal> Download::add(Module& module, const DownloadDataBlock& ddb, double seconds) {
    if (module.state != ModuleState::Unannounced) {
        if (auto refusal = mismatch(module, ddb.blockNumber, ddb.data.size, ddb.at)) {
            return refusal;
        }
    }
    if (const auto known = blockOf(module, ddb.blockNumber)) {
        if (!std::equal(known->begin(), known->end(), ddb.data.begin(), ddb.data.end())) {
            return Refusal{RefusalKind::BlockChanged, ddb.at,
                           "block " + std::to_string(ddb.blockNumber) + " came again with other bytes"};
        }
        return std::nullopt;
    }
    const std::size_t cost = costOfBlock(ddb.data.size);
    if (!makeRoom(module, cost)) {
        return Refusal{RefusalKind::MemoryLimit, ddb.at,
                       "the carousel takes more than " + std::to_string(m_limits.memory) + " bytes"};
    }
    dsmcc::add(module, ddb.blockNumber, ddb.data, seconds);
    m_memory += cost;
    return std::nullopt;
}

void Download::finishIfWhole(Module& module, double seconds) {
    if (module.state != ModuleState::Incomplete || (!module.whole() && module.blocks.size() != module.blockCount)) {
        return;
    }
    if (!module.whole()) {
        const std::size_t before = costOf(module);
        join(module);
        m_memory = m_memory - before + costOf(module);
    }
    Bytes content;
    const ModuleState state = module.originalSize ? inflate(module, content) : ModuleState::Complete;
    const Bytes& held = module.originalSize ? content : module.bytes;
    std::vector<Object> objects;
    if (module.object && state == ModuleState::Complete) {
        objects = readObjects({held.data(), held.size()}, m_limits.objects - m_objects, m_limits, module.refusals);
    }
    m_memory += content.size(); // from here on nothing runs out of memory
    m_objects += countOf(objects);
    module.inflated = std::move(content);
    module.objects = std::move(objects);
    module.completed = seconds;
    module.state = state;
}

/// @return the state that the module has then
ModuleState Download::inflate(Module& module, Bytes& content) const {
    try {
        const Descriptor* const type = module.info.descriptor(Descriptor::COMPRESSION_TYPE);
        if (type != nullptr && !type->body.empty() && type->body[0] != 0) {
            refuse(RefusalKind::Compression, 0, "compression_type " + std::to_string(type->body[0]) + " is not known");
        }
        if (*module.originalSize > m_limits.inflated || *module.originalSize > m_limits.memory - m_memory) {
            note(module.refusals, {RefusalKind::InflationLimit, 0,
                                   "inflated it has " + std::to_string(*module.originalSize) + " bytes"});
            return ModuleState::InflateLimit;
        }
        content = inflated({module.bytes.data(), module.bytes.size()}, *module.originalSize);
        return ModuleState::Complete;
    } catch (const Refused& refused) {
        note(module.refusals, refused.refusal);
        return refused.refusal.kind == RefusalKind::OriginalSize ? ModuleState::OriginalSize
                                                                 : ModuleState::InflateFailed;
    }
}

void Download::drop(std::optional<Module>& module) {
    if (module) {
        m_memory -= costOf(*module);
        m_objects -= countOf(module->objects);
        module.reset();
    }
}

/// What nobody announces gives way to what is announced.
bool Download::makeRoom(const Module& module, std::size_t size) {
    const auto fits = [&] { return size <= m_limits.memory && m_memory <= m_limits.memory - size; };
    if (!fits() && module.state != ModuleState::Unannounced) {
        for (auto& [id, slot] : m_slots) {
            drop(slot.unannounced);
        }
    }
    return fits();
}

} // namespace dsmcc
