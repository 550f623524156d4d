#include "extracting/Extractor.h"

#include <algorithm>
#include <fmt/format.h>
#include <map>

namespace inspect {

namespace {

std::string folderOf(Pid pid, std::optional<std::uint32_t> carouselId, std::uint64_t version) {
    const std::string carousel = carouselId ? fmt::format("carousel-0x{:08X}", *carouselId) : "groups";
    return fmt::format("pid-0x{:04X}-{}-version-{}", pid, carousel, version);
}

bool isAnnouncedBy(const dsmcc::Group& group, const dsmcc::DownloadInfoIndication& dii) {
    return group.dii != nullptr && group.dii->downloadId == dii.downloadId &&
           dsmcc::identificationOf(group.dii->transactionId) == dsmcc::identificationOf(dii.transactionId);
}

bool announceTheSame(const dsmcc::DownloadInfoIndication& one, const dsmcc::DownloadInfoIndication& other) {
    return std::equal(one.modules.begin(), one.modules.end(), other.modules.begin(), other.modules.end(),
                      [](const dsmcc::ModuleInfo& a, const dsmcc::ModuleInfo& b) {
                          return a.id == b.id && a.version == b.version && a.size == b.size;
                      });
}

bool isComplete(const dsmcc::Carousel& carousel) {
    return std::all_of(carousel.groups.begin(), carousel.groups.end(), [](const dsmcc::Group& group) {
        return group.dii != nullptr &&
               std::all_of(group.modules.begin(), group.modules.end(),
                           [](const dsmcc::Module* module) { return module->state != dsmcc::ModuleState::Incomplete; });
    });
}

/// FNV-1a of 64 bits.
class Hash {
public:
    void add(std::string_view text) {
        add(text.size());
        for (const char each : text) {
            addByte(static_cast<unsigned char>(each));
        }
    }
    void add(std::uint64_t number) {
        for (unsigned shift = 0; shift < 64; shift += 8) {
            addByte(static_cast<unsigned char>(number >> shift));
        }
    }
    std::uint64_t value() const { return m_value; }

private:
    void addByte(unsigned char byte) { m_value = (m_value ^ byte) * 0x100000001B3U; }

    std::uint64_t m_value = 0xCBF29CE484222325U;
};

/// @param effort grows by what it takes
std::uint64_t hashOf(Pid pid, const dsmcc::Carousel& carousel, const dsmcc::Tree& tree, std::uint64_t& effort) {
    constexpr std::uint64_t EACH = 1024;
    Hash hash;
    std::map<std::pair<const std::uint8_t*, std::size_t>, std::uint64_t> contents; // a file may have many names
    hash.add(pid);
    hash.add(carousel.id.value_or(0));
    for (const dsmcc::Entry& entry : tree.entries) {
        effort += EACH;
        hash.add(entry.path);
        hash.add(static_cast<std::uint64_t>(entry.state));
        const dsmcc::ByteView content = entry.content();
        const auto [known, isNew] = contents.try_emplace({content.data, content.size});
        if (isNew) {
            Hash ofContent;
            ofContent.add({reinterpret_cast<const char*>(content.data), content.size});
            known->second = ofContent.value();
            effort += content.size;
        }
        hash.add(known->second);
        if (entry.state == dsmcc::EntryState::ModuleIncomplete) {
            hash.add(entry.module->version);
            hash.add(entry.module->received());
        }
    }
    return hash.value();
}

/// What DIIs may have cost for each byte of the stream: one of a few bytes can have all that came compared anew.
constexpr std::uint64_t EFFORT_OF_BYTE = 64;

/// What may be written for each: what came once may be written with each version, and is mostly compressed.
constexpr std::uint64_t WRITTEN_OF_BYTE = 16;

std::uint64_t effortOf(const dsmcc::Carousel& carousel) {
    constexpr std::uint64_t EACH = 128;
    std::uint64_t count = 1 + carousel.unannounced.size();
    for (const dsmcc::Group& group : carousel.groups) {
        count += 1 + group.modules.size();
    }
    return count * EACH;
}

void refuse(Extraction& extraction, const std::string& why) {
    ++extraction.refused;
    extraction.others.push_back({NotAsAnnounced::Kind::Refused, {}, {}, why});
}

} // namespace

void Extractor::before(Pid pid, const Position& position, const dsmcc::Carousels& carousels,
                       const dsmcc::DownloadInfoIndication& dii) {
    m_reached = position.offset;
    if (m_effort > m_wishes.effort + m_reached * EFFORT_OF_BYTE) {
        leaveOnce(m_saidTooOften, {pid, dii.downloadId}, "DIIs change so often that not each version is looked at");
        return;
    }
    for (const dsmcc::Carousel& carousel : carousels.carousels()) {
        m_effort += effortOf(carousel);
        const auto group = std::find_if(carousel.groups.begin(), carousel.groups.end(),
                                        [&dii](const dsmcc::Group& each) { return isAnnouncedBy(each, dii); });
        if (group == carousel.groups.end()) {
            continue;
        }
        const Key key(pid, carousel.id);
        Followed& followed = followedOf(key);
        const std::uint16_t identification = dsmcc::identificationOf(dii.transactionId);
        if (announceTheSame(*group->dii, dii)) {
            followed.isSettled = followed.isSettled || followed.begunBy.value_or(identification) == identification;
            continue;
        }
        if (followed.isSettled || isComplete(carousel)) {
            write(key, followed, carousel, carousels.tree(carousel));
        }
        followed.begunBy = identification;
        followed.isSettled = false;
    }
}

void Extractor::ends(Pid pid, const dsmcc::Carousels& carousels) {
    for (const dsmcc::Carousel& carousel : carousels.carousels()) {
        if (!carousel.groups.empty()) {
            const Key key(pid, carousel.id);
            write(key, followedOf(key), carousel, carousels.tree(carousel));
        }
    }
}

Extractor::Followed& Extractor::followedOf(const Key& key) {
    if (m_followed.find(key) == nullptr) {
        m_followed.put(key, {});
    }
    return *m_followed.find(key);
}

void Extractor::write(const Key& key, Followed& followed, const dsmcc::Carousel& carousel, const dsmcc::Tree& tree) {
    const std::uint64_t hash = hashOf(key.first, carousel, tree, m_effort);
    if (m_written.find(hash) != nullptr) {
        return;
    }
    if (m_folders >= m_wishes.mostFolders) {
        leaveOnce(m_saidTooMany, key, fmt::format("{} folders are written, and no more will be", m_folders));
        return;
    }
    if (m_bytes >= m_wishes.mostOfAll + m_reached * WRITTEN_OF_BYTE) {
        leaveOnce(m_saidTooMuch, key,
                  fmt::format("{} bytes are written, and no more will be before more comes", m_bytes));
        return;
    }
    m_written.put(hash, {});
    ++followed.versions;
    const std::string name = folderOf(key.first, key.second, followed.versions);
    Extraction extraction{m_wishes.folder + '/' + name, key.first, key.second, followed.versions, 0, 0, 0, 0, 0, {}};
    try {
        CarouselFolder folder(Folder(m_wishes.folder), name, m_wishes, extraction);
        folder.write(carousel, tree);
        m_bytes += folder.bytes();
    } catch (const Folder::Refused& refused) {
        refuse(extraction, refused.what());
    }
    ++m_folders;
    tell(extraction);
}

/// Tells of the first version that has no folder for this reason.
void Extractor::leaveOnce(bool& isSaid, const Key& key, const std::string& why) {
    if (std::exchange(isSaid, true)) {
        return;
    }
    Extraction extraction{m_wishes.folder, key.first, key.second, followedOf(key).versions + 1, 0, 0, 0, 0, 0, {}};
    refuse(extraction, why);
    tell(extraction);
}

void Extractor::tell(const Extraction& extraction) {
    m_isWhole = m_isWhole && extraction.whole();
    m_tell(extraction);
}

} // namespace inspect
