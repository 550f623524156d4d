#include "dsmcc/Carousels.h"

#include "Download.h"
#include "Modules.h"
#include "Tree.h"

#include <algorithm>

namespace dsmcc {

namespace {

/// A DSI that joins groups.
struct GroupsOfDsi {
    DownloadServerInitiate dsi;
    Repetition repetition;
};

} // namespace

struct CollectedCarousels {
    explicit CollectedCarousels(const Limits& given) : limits(given) {}

    /// Null when there are too many.
    Download* downloadOf(std::uint32_t id, double seconds);

    std::optional<Refusal> take(DownloadServerInitiate& dsi, double seconds);
    std::optional<Refusal> take(DownloadInfoIndication& dii, double seconds);
    std::optional<Refusal> take(const DownloadDataBlock& ddb, double seconds);
    Refusal tooMany() const;

    /// The download that has the DII of a group; null when none has.
    const Download* downloadOf(const GroupInfo& group) const;

    Limits limits;
    std::map<std::uint32_t, Download> downloads;
    std::optional<GroupsOfDsi> groups;
};

/// A new one takes the place of one that fell silent.
Download* CollectedCarousels::downloadOf(std::uint32_t id, double seconds) {
    auto found = downloads.find(id);
    if (found == downloads.end()) {
        if (downloads.size() >= limits.carousels && !downloads.empty()) {
            const auto oldest = std::min_element(downloads.begin(), downloads.end(), [](const auto& a, const auto& b) {
                return a.second.lastHeard() < b.second.lastHeard();
            });
            if (oldest->second.lastHeard() + limits.silence < seconds) {
                downloads.erase(oldest);
            }
        }
        if (downloads.size() >= limits.carousels) {
            return nullptr;
        }
        found = downloads.emplace(id, Download(id, limits)).first;
    }
    found->second.heard(seconds);
    return &found->second;
}

Refusal CollectedCarousels::tooMany() const {
    return {RefusalKind::CarouselLimit, 0, "more than " + std::to_string(limits.carousels) + " carousels on the PID"};
}

std::optional<Refusal> CollectedCarousels::take(DownloadServerInitiate& dsi, double seconds) {
    if (!dsi.gateway) {
        if (!groups) {
            groups.emplace();
        }
        groups->dsi = std::move(dsi);
        count(groups->repetition, seconds);
        return std::nullopt;
    }
    Download* const download = downloadOf(dsi.gateway->location->carouselId, seconds);
    if (download == nullptr) {
        return tooMany();
    }
    download->take(std::move(dsi), seconds);
    return std::nullopt;
}

std::optional<Refusal> CollectedCarousels::take(DownloadInfoIndication& dii, double seconds) {
    Download* const download = downloadOf(dii.downloadId, seconds);
    return download == nullptr ? tooMany() : download->take(std::move(dii), seconds);
}

std::optional<Refusal> CollectedCarousels::take(const DownloadDataBlock& ddb, double seconds) {
    Download* const download = downloadOf(ddb.downloadId, seconds);
    return download == nullptr ? tooMany() : download->take(ddb, seconds);
}

const Download* CollectedCarousels::downloadOf(const GroupInfo& group) const {
    for (const auto& [id, download] : downloads) {
        const auto found = download.groups().find(identificationOf(group.id));
        if (found != download.groups().end() && !found->second.dii.object && !download.hasGateway()) {
            return &download;
        }
    }
    return nullptr;
}

Carousels::Carousels(const Limits& limits) : m_state(std::make_unique<CollectedCarousels>(limits)) {}
Carousels::~Carousels() = default;
Carousels::Carousels(Carousels&& other) noexcept = default;
Carousels& Carousels::operator=(Carousels&& other) noexcept = default;

std::optional<Refusal> Carousels::take(ByteView section, double seconds) {
    Message message = readMessage(section, m_state->limits.crc32);
    if (const auto* const refusal = std::get_if<Refusal>(&message)) {
        return *refusal;
    }
    if (auto* const dsi = std::get_if<DownloadServerInitiate>(&message)) {
        return m_state->take(*dsi, seconds);
    }
    if (auto* const dii = std::get_if<DownloadInfoIndication>(&message)) {
        return m_state->take(*dii, seconds);
    }
    if (const auto* const ddb = std::get_if<DownloadDataBlock>(&message)) {
        return m_state->take(*ddb, seconds);
    }
    return std::nullopt; // another message
}

std::vector<Carousel> Carousels::carousels() const {
    std::vector<Carousel> carousels;
    std::set<std::pair<const Download*, std::uint16_t>> joined;
    if (m_state->groups) {
        Carousel carousel;
        carousel.type = CarouselType::Data;
        carousel.dsi = &m_state->groups->dsi;
        carousel.repetition = m_state->groups->repetition;
        carousel.first = carousel.repetition.first;
        carousel.last = carousel.repetition.last;
        for (const GroupInfo& info : carousel.dsi->groups) {
            const std::uint16_t identification = identificationOf(info.id);
            const Download* const download = m_state->downloadOf(info);
            Group group;
            if (download != nullptr && joined.emplace(download, identification).second) {
                const Carousel part = download->carousel();
                group = download->group(identification);
                carousel.first = std::min(carousel.first, part.first);
                carousel.last = std::max(carousel.last, part.last);
                carousel.revision += part.revision;
            }
            group.info = &info;
            carousel.groups.push_back(std::move(group));
        }
        carousels.push_back(std::move(carousel));
    }
    for (const auto& [id, download] : m_state->downloads) {
        Carousel carousel = download.carousel();
        for (const auto& [identification, group] : download.groups()) {
            if (joined.count({&download, identification}) == 0) {
                carousel.groups.push_back(download.group(identification));
            }
        }
        // What is left of one whose groups a DSI joins stands with them.
        if (carousel.groups.empty() && !download.groups().empty() && carousel.dsi == nullptr) {
            std::vector<const Module*>& unannounced = carousels.front().unannounced;
            unannounced.insert(unannounced.end(), carousel.unannounced.begin(), carousel.unannounced.end());
        } else {
            carousels.push_back(std::move(carousel));
        }
    }
    return carousels;
}

Tree Carousels::tree(const Carousel& carousel) const {
    return treeOf(carousel, m_state->limits);
}

std::size_t Carousels::memory() const {
    std::size_t memory = sizeof *m_state;
    for (const auto& [id, download] : m_state->downloads) {
        memory += download.memory();
    }
    return memory;
}

} // namespace dsmcc
