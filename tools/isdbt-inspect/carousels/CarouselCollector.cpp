#include "CarouselCollector.h"

#include "tables/TableKinds.h"

#include <algorithm>
#include <bitstream/mpeg/ts.h>
#include <fmt/format.h>
#include <set>

namespace inspect {

namespace {

constexpr std::size_t MOST_ENTRIES = 16384; ///< of all trees
constexpr std::size_t MOST_DIIS = 64;       ///< of a carousel

/// Of a message: its low 16 bits are two bytes further on. Of a block, the downloadId stands there.
constexpr std::size_t TRANSACTION_ID = 12;

void add(std::vector<CarouselRefusal>& refusals, const dsmcc::Refusal& refusal, const Position& position) {
    const auto known = std::find_if(refusals.begin(), refusals.end(), [&refusal](const CarouselRefusal& each) {
        return each.refusal.kind == refusal.kind;
    });
    if (known != refusals.end()) {
        ++known->count;
    } else {
        refusals.push_back({refusal, 1, position});
    }
}

} // namespace

CarouselCollector::CarouselCollector(std::size_t memory) {
    m_limits.crc32 = false; // sections are sound or not before they come here
    m_limits.memory = memory;
    m_limits.groups = MOST_DIIS;
    m_limits.entries = MOST_ENTRIES;
}

bool CarouselCollector::isBegunIn(const std::uint8_t* packet) {
    constexpr std::size_t MESSAGE = 8; // begins behind the section's header
    constexpr std::uint8_t PROTOCOL = 0x11;
    constexpr std::uint8_t DOWNLOAD = 0x03;
    if (!ts_get_unitstart(packet) || !ts_has_payload(packet) || ts_get_scrambling(packet) != 0 ||
        ts_get_transporterror(packet)) {
        return false;
    }
    std::size_t at = TS_HEADER_SIZE + (ts_has_adaptation(packet) ? std::size_t{1} + ts_get_adaptation(packet) : 0);
    at += at < TS_SIZE ? std::size_t{1} + packet[at] : 0;
    return at + MESSAGE + 1 < TS_SIZE && isCarouselTable(packet[at]) && packet[at + MESSAGE] == PROTOCOL &&
           packet[at + MESSAGE + 1] == DOWNLOAD;
}

void CarouselCollector::finish() {
    flush();
    for (const auto& [pid, collected] : m_pids) {
        if (m_listener != nullptr) {
            m_listener->ends(pid, collected.carousels);
        }
    }
}

/// Null when there are too many.
CarouselCollector::Collected* CarouselCollector::collectedOn(Pid pid, double now) {
    const auto found = m_pids.find(pid);
    if (found != m_pids.end()) {
        return &found->second;
    }
    if (m_pids.size() >= MOST_CAROUSEL_PIDS) {
        forgetWhatIsSilent(now);
    }
    if (m_pids.size() >= MOST_CAROUSEL_PIDS) {
        return nullptr;
    }
    Collected& fresh = m_pids.try_emplace(pid, Collected{dsmcc::Carousels(m_limits), 0, 0, {}, now, {}}).first->second;
    m_memory += fresh.carousels.memory();
    return &fresh;
}

void CarouselCollector::forgetWhatIsSilent(double now) {
    for (auto each = m_pids.begin(); each != m_pids.end();) {
        if (each->second.last + m_limits.silence >= now) {
            ++each;
            continue;
        }
        if (m_listener != nullptr) {
            m_listener->ends(each->first, each->second.carousels);
        }
        m_memory -= each->second.carousels.memory();
        each = m_pids.erase(each);
    }
}

void CarouselCollector::take(const Section& section) {
    constexpr std::size_t MOST_WAITING = 256; // sections: a megabyte, and more than come before the second PCR
    if (!isCarouselTable(section.tableId()) || !section.pid()) {
        return;
    }
    Taken taken{*section.pid(), {section.data(), section.data() + section.size()}, section.sound(), section.position()};
    m_waits = m_waits && !section.position().seconds;
    if (m_waits && m_waiting.size() < MOST_WAITING) {
        m_waiting.push_back(std::move(taken));
        return;
    }
    flush();
    take(taken);
}

void CarouselCollector::flush() {
    m_waits = m_waits && m_waiting.empty();
    for (const Taken& each : m_waiting) {
        take(each);
    }
    m_waiting = {};
}

void CarouselCollector::take(const Taken& section) {
    const double now = section.position.seconds.value_or(0);
    if (m_memory > m_limits.memory) {
        forgetWhatIsSilent(now);
    }
    Collected* const collected = collectedOn(section.pid, now);
    if (collected == nullptr) {
        return;
    }
    collected->last = now;
    if (!section.sound) {
        ++collected->crcErrors;
        return;
    }
    ++collected->sections;
    if (section.bytes[0] == DSMCC_MESSAGES) {
        collected->remember(section, m_limits.groups);
    }
    const std::optional<dsmcc::Refusal> refusal =
        section.bytes[0] == DSMCC_MESSAGES ? take(section.pid, *collected, section) : takeBlock(*collected, section);
    if (refusal) {
        add(collected->refusals, *refusal, section.position);
    }
}

/// A block goes to the carousel that announces it, on whatever PID that is; where its own PID announces some, to both.
std::optional<dsmcc::Refusal> CarouselCollector::takeBlock(Collected& collected, const Taken& section) {
    std::uint32_t downloadId = 0;
    for (std::size_t at = TRANSACTION_ID; at < TRANSACTION_ID + 4 && at < section.bytes.size(); ++at) {
        downloadId = downloadId << 8U | section.bytes[at];
    }
    const Pid* const home = m_homes.find({section.pid, downloadId});
    const auto other = home == nullptr ? m_pids.end() : m_pids.find(*home);
    std::optional<dsmcc::Refusal> refusal;
    if (other != m_pids.end()) {
        other->second.last = section.position.seconds.value_or(0);
        refusal = take(*home, other->second, section);
    }
    if (other == m_pids.end() || !collected.messages.empty()) {
        refusal = take(section.pid, collected, section);
    }
    return refusal;
}

/// Taps name the streams of the blocks.
void CarouselCollector::expectBlocks(Pid pid, const dsmcc::DownloadInfoIndication& dii) {
    constexpr std::size_t MOST_TAGS = 4;
    std::set<std::uint16_t> tags; // nearly always the same
    for (const dsmcc::ModuleInfo& module : dii.modules) {
        if (!module.taps.empty() && tags.size() < MOST_TAGS) {
            tags.insert(module.taps.front().associationTag);
        }
    }
    for (const std::uint16_t tag : tags) {
        const std::optional<Pid> stream = m_blockStreams.find(pid, tag);
        if (stream && *stream != pid) {
            m_homes.put({*stream, dii.downloadId}, pid);
        }
    }
}

/// Each carousel has its limit; this one is of all together.
std::optional<dsmcc::Refusal> CarouselCollector::take(Pid pid, Collected& collected, const Taken& section) {
    if (m_memory > m_limits.memory) {
        return dsmcc::Refusal{dsmcc::RefusalKind::MemoryLimit, 0,
                              fmt::format("the carousels take more than {} bytes", m_limits.memory)};
    }
    const dsmcc::ByteView bytes{section.bytes.data(), section.bytes.size()};
    if (section.bytes[0] == DSMCC_MESSAGES) {
        const dsmcc::Message message = dsmcc::readMessage(bytes, m_limits.crc32);
        if (const auto* const dii = std::get_if<dsmcc::DownloadInfoIndication>(&message)) {
            expectBlocks(pid, *dii);
            if (m_listener != nullptr) {
                m_listener->before(pid, section.position, collected.carousels, *dii);
            }
        }
    }
    const std::size_t before = collected.carousels.memory();
    std::optional<dsmcc::Refusal> refusal = collected.carousels.take(bytes, section.position.seconds.value_or(0));
    m_memory = m_memory - before + collected.carousels.memory();
    return refusal;
}

/// Where each DSI and DII came with other bytes than before.
void CarouselCollector::Collected::remember(const Taken& section, std::size_t most) {
    if (section.bytes.size() < TRANSACTION_ID + 4) {
        return;
    }
    const auto low =
        static_cast<std::uint32_t>(section.bytes[TRANSACTION_ID + 2] << 8U | section.bytes[TRANSACTION_ID + 3]);
    const std::uint16_t identification = dsmcc::identificationOf(low);
    const auto known = messages.find(identification);
    if (known == messages.end() && messages.size() > most) {
        return;
    }
    if (known == messages.end() || known->second.bytes != section.bytes) {
        messages[identification] = {section.position, section.bytes};
    }
}

std::vector<CarouselPid> CarouselCollector::carousels() {
    flush();
    std::vector<CarouselPid> pids;
    std::size_t entries = 0;
    for (const auto& [pid, collected] : m_pids) {
        CarouselPid of{pid, collected.sections, collected.crcErrors, collected.refusals, {}, collected.messages};
        for (const dsmcc::Carousel& carousel : collected.carousels.carousels()) {
            dsmcc::Tree tree;
            if (entries < m_limits.entries) {
                tree = collected.carousels.tree(carousel);
            } else {
                tree.refusal = dsmcc::Refusal{dsmcc::RefusalKind::EntryLimit, 0,
                                              fmt::format("the trees have more than {} entries", m_limits.entries)};
            }
            entries += tree.entries.size();
            of.carousels.push_back({pid, carousel, std::move(tree)});
        }
        pids.push_back(std::move(of));
    }
    return pids;
}

} // namespace inspect
