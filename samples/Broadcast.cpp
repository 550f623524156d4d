#include "Broadcast.h"

#include "ApplicationFiles.h"
#include "Tables.h"

#include <limits>

namespace sample {

namespace {

constexpr Ticks MILLISECOND = SECOND / 1000;
constexpr Ticks NEVER = std::numeric_limits<Ticks>::max();

bool isActive(const FaultAt& fault, Ticks now) {
    return fault.fault.sinceStart || (now >= fault.begin && now < fault.end);
}

} // namespace

FaultAt faultAt(const std::string& name) {
    return faultAt(name, faultNamed(name).begins * SECOND);
}

FaultAt faultAt(const std::string& name, Ticks begin) {
    const unsigned seconds = faultNamed(name).seconds;
    return faultAt(name, begin, seconds == 0 ? NEVER : begin + seconds * SECOND);
}

FaultAt faultAt(const std::string& name, Ticks begin, Ticks end) {
    return {faultNamed(name), begin, end};
}

CarouselOnAir applicationsOnAir() {
    return {{applicationPlan(), applicationFiles()}, 2 * SECOND};
}

Broadcast::Broadcast(unsigned bitRate, std::vector<FaultAt> faults, const CarouselOnAir& carousel)
    : m_multiplexer(bitRate), m_faults(std::move(faults)) {
    m_multiplexer.repeatClock(HD_PCR_PID, 40 * MILLISECOND, 0);
    m_multiplexer.repeatClock(ONE_SEG_PCR_PID, 200 * MILLISECOND, 13 * MILLISECOND);
    addTables();
    addStreams(bitRate);
    m_multiplexer.repeatCarousel(CAROUSEL_PID, carousel.carousel, SECOND / 2, carousel.turn, 347 * MILLISECOND);
    disturb();
}

/// First times spread the load.
void Broadcast::addTables() {
    const auto repeat = [this](std::uint16_t pid, Ticks period, Ticks first, const Bytes& section) {
        m_multiplexer.repeatSection(pid, period, first, [section](Ticks) { return section; });
    };
    const auto repeatEvent = [this](std::uint16_t pid, std::uint16_t serviceId, unsigned section, Ticks first) {
        m_multiplexer.repeatSection(
            pid, SECOND, first, [serviceId, section](Ticks now) { return eit(serviceId, secondOfDay(now), section); });
    };
    repeat(PAT_PID, 100 * MILLISECOND, 2 * MILLISECOND, pat());
    repeat(HD_PMT_PID, 100 * MILLISECOND, 22 * MILLISECOND, hdPmt());
    repeat(ONE_SEG_PMT_PID, 500 * MILLISECOND, 47 * MILLISECOND, oneSegPmt());
    repeat(NIT_PID, SECOND, 67 * MILLISECOND, nit());
    repeat(SDT_PID, 2 * SECOND, 87 * MILLISECOND, sdt());
    repeat(AIT_PID, 500 * MILLISECOND, 127 * MILLISECOND, nclAit());
    repeat(AIT_PID, 500 * MILLISECOND, 147 * MILLISECOND, javaAit());
    repeat(EVENTS_PID, 250 * MILLISECOND, 167 * MILLISECOND, streamEvents());
    repeat(BIT_PID, SECOND, 187 * MILLISECOND, bit());
    repeatEvent(EIT_PID, HD_SERVICE_ID, 0, 227 * MILLISECOND);
    repeatEvent(EIT_PID, HD_SERVICE_ID, 1, 247 * MILLISECOND);
    repeatEvent(ONE_SEG_EIT_PID, ONE_SEG_SERVICE_ID, 0, 267 * MILLISECOND);
    repeatEvent(ONE_SEG_EIT_PID, ONE_SEG_SERVICE_ID, 1, 287 * MILLISECOND);
    m_multiplexer.repeatSection(TOT_PID, 5 * SECOND, 0, [](Ticks now) { return tot(secondOfDay(now)); });
    repeat(SDTT_PID, 60 * SECOND, 327 * MILLISECOND, sdtt());
}

/// The video of the living room takes half of the bit rate, all others always the same.
void Broadcast::addStreams(unsigned bitRate) {
    constexpr unsigned PICTURES_PER_SECOND = 30;
    const unsigned packetsPerPicture = bitRate / 2 / (TS_SIZE * 8) / PICTURES_PER_SECOND;
    m_multiplexer.repeatFiller(HD_VIDEO_PID, SECOND / PICTURES_PER_SECOND, 1 * MILLISECOND, VIDEO_STREAM,
                               packetsPerPicture);
    m_multiplexer.repeatFiller(HD_AUDIO_PID, 64 * MILLISECOND, 5 * MILLISECOND, AUDIO_STREAM, 2);
    m_multiplexer.repeatFiller(HD_CAPTIONS_PID, SECOND, 6 * MILLISECOND, PRIVATE_STREAM);
    m_multiplexer.repeatFiller(ONE_SEG_VIDEO_PID, SECOND / 15, 7 * MILLISECOND, VIDEO_STREAM, 3);
    m_multiplexer.repeatFiller(ONE_SEG_AUDIO_PID, 128 * MILLISECOND, 8 * MILLISECOND, AUDIO_STREAM);
    m_multiplexer.repeatFiller(ONE_SEG_CAPTIONS_PID, SECOND, 9 * MILLISECOND, PRIVATE_STREAM);
}

void Broadcast::disturb() {
    m_multiplexer.changeSections([this](Ticks now, std::uint16_t pid, Bytes& section) {
        for (const FaultAt& each : m_faults) {
            if (each.fault.section && !section.empty() && isActive(each, now)) {
                each.fault.section({now, each.begin, each.end}, pid, section);
            }
        }
    });
    m_multiplexer.changePackets([this](Ticks now, Packet& packet) {
        for (const FaultAt& each : m_faults) {
            if (each.fault.packet && isActive(each, now)) {
                each.fault.packet({now, each.begin, each.end}, packet);
            }
        }
    });
}

const Bytes& Broadcast::next() {
    const Ticks time = now();
    const Packet packet = m_multiplexer.next();
    m_sent.assign(packet.begin(), packet.end());
    for (const FaultAt& each : m_faults) {
        if (each.fault.sent && !m_sent.empty() && isActive(each, time)) {
            each.fault.sent({time, each.begin, each.end}, m_sent);
        }
    }
    return m_sent;
}

Bytes broadcast(Ticks duration, std::vector<FaultAt> faults) {
    Broadcast broadcast(Broadcast::USUAL_BIT_RATE, std::move(faults));
    Bytes stream;
    while (broadcast.now() < duration) {
        const Bytes& sent = broadcast.next();
        stream.insert(stream.end(), sent.begin(), sent.end());
    }
    return stream;
}

} // namespace sample
