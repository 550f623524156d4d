#include "packets/StreamClock.h"

#include "packets/AdaptationField.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace inspect {

namespace {

constexpr unsigned PCR_EXTENSION = 300;
constexpr std::uint64_t PCR_ROUND = (std::uint64_t{1} << 33U) * PCR_EXTENSION;
constexpr double PCR_RATE = 27e6;

constexpr double BITS_OF_PACKET = TS_SIZE * 8.0;

/// 2048/63 Mbit/s carry packets of 204 bytes.
constexpr double PACKET_TIME_OF_BROADCAST = 3213.0 / 64e6;

/// References come at least every tenth of a second. What lies further apart is a jump, or something is missing.
constexpr double LONGEST_GAP = 1;

/// No multiplex carries more packets in that time.
constexpr std::uint64_t LONGEST_GAP_IN_PACKETS = 50000;

/// A loss may last so long. A jump to another source's time is rarely so short: it is anything up to a day.
constexpr double LONGEST_LOSS = 600;

/// Time in which the counters of most PIDs have come once, behind a jump; and in which a reference comes, behind a
/// counter that is broken.
constexpr double UNTIL_COUNTERS = 0.2;
constexpr double UNTIL_REFERENCE = 0.5;

/// So many PIDs whose counters are broken together are no accident.
constexpr unsigned MANY = 3;

/// So long after a loss counters may be broken by it, on PIDs whose packets are rare.
constexpr double SAME_LOSS = 30;

/// So many references at least show that they come regularly.
constexpr unsigned REGULAR = 8;

/// Clocks differ a little: one second of the stream may take so much longer by the clock of this machine.
constexpr double DRIFT = 0.001;

double secondsOf(std::uint64_t reference) {
    return static_cast<double>(reference) / PCR_RATE;
}

double secondsFrom(std::uint64_t before, std::uint64_t reference) {
    return secondsOf((reference + PCR_ROUND - before) % PCR_ROUND);
}

/// Whether references have gone on while they were missing. Packet rates vary.
bool agree(double gap, double expected) {
    return std::abs(gap - expected) <= std::max(0.1, expected / 2);
}

/// Whether an announced reference belongs to the old clock: the flag may stand before the first of the new one.
bool isSame(double gap, double expected) {
    return std::abs(gap - expected) <= std::max(0.005, expected / 10);
}

} // namespace

void StreamClock::setBitRate(double bitRate) {
    m_start = 1;
    m_packetTime = BITS_OF_PACKET / bitRate;
    anchor(1, 0);
}

void StreamClock::takeBroadcast(std::uint64_t lost) {
    if (!m_isBroadcast) { // its first packets are no more than those that show it
        m_isBroadcast = true;
        m_start = 1;
        m_packetTime = PACKET_TIME_OF_BROADCAST;
        anchor(1, 0);
        for (auto& [pid, track] : m_tracks) {
            track.time = estimate(track.number);
        }
    }
    // What was said to be lost may be found.
    m_elapsed += static_cast<double>(static_cast<std::int64_t>(lost - m_lost)) * m_packetTime;
    m_lost = lost;
}

void StreamClock::takeArrival(std::uint64_t number, double arrival) {
    if (m_lastArrival == arrival) {
        return; // the first packet that is received in time is the one that counts
    }
    const double since = arrival - m_lastArrival.value_or(arrival);
    const bool isFirst = !m_lastArrival;
    m_lastArrival = arrival;
    if (isFirst) {
        m_arrivalAtStart = arrival - (m_packetTime == 0 ? 0 : estimate(number));
        m_inTime = arrival;
        m_start = m_packetTime == 0 && m_tracks.empty() ? number : m_start;
        return;
    }
    if (m_packetTime == 0) {
        if (arrival - m_arrivalAtStart > 2 * LONGEST_GAP && number > m_start) { // as if no reference came
            m_packetTime = (arrival - m_arrivalAtStart) / static_cast<double>(number - m_start);
            anchor(number, arrival - m_arrivalAtStart);
        }
        return;
    }
    const double lag = arrival - m_arrivalAtStart - estimate(number);
    if (lag < 0) {
        m_arrivalAtStart += lag;
        m_ahead -= lag;
        m_inTime = arrival;
    } else if (lag > LONGEST_GAP && since < lag / 2) {
        m_arrivalAtStart += lag;
        m_lag = lag;
        m_lagTime = arrival - std::exchange(m_inTime, arrival);
    } else if (lag > LONGEST_GAP) {
        m_elapsed += lag;
        m_pause += lag;
    } else if (!m_isBroadcast && hasEnded(number)) {
        m_elapsed += lag;
    } else {
        m_arrivalAtStart += std::min(lag, DRIFT * since);
    }
}

void StreamClock::take(const std::uint8_t* packet, Position& position) {
    if (position.packet >= m_nextDecision) {
        endBurst();
    }
    if (position.packet >= m_end) {
        cease(position);
    }
    if (const std::optional<double> lag = std::exchange(m_lag, std::nullopt)) {
        tell(EventKind::SlowClock, m_pid, position, *lag / m_lagTime);
        m_events.back().from = m_lagTime;
    }
    if (ts_has_adaptation(packet) && hasPcr(packet) && !ts_get_transporterror(packet)) {
        const std::uint64_t extension = tsaf_get_pcrext(packet);
        if (extension < PCR_EXTENSION) {
            takeReference({ts_get_pid(packet), tsaf_get_pcr(packet) * PCR_EXTENSION + extension,
                           announcesDiscontinuity(packet), position});
        }
    }
    position.seconds = seconds(position.packet);
}

void StreamClock::takeReference(const Reference& reference) {
    const auto [place, isNew] = m_tracks.try_emplace(reference.pid);
    Track& track = place->second;
    ++track.sinceReview;
    if (isNew) {
        begin(track, reference);
    } else if (reference.value == track.reference) {
        repeat(track, reference);
    } else {
        const double gap = secondsFrom(track.reference, reference.value);
        const double expected = estimate(reference.position.packet) - track.time;
        if (reference.announced && (m_packetTime == 0 || !isSame(gap, expected))) {
            splice(track, reference);
        } else if ((gap <= LONGEST_GAP || (m_packetTime != 0 && agree(gap, expected))) && !mayBeLoss(gap, expected)) {
            proceed(track, reference, gap, expected);
        } else {
            jump(track, reference, gap, expected);
        }
    }
    review(reference);
}

/// Whether fewer packets came than time has passed. The counters tell whether the others are lost or were never there.
bool StreamClock::mayBeLoss(double gap, double expected) const {
    return m_packetTime != 0 && !m_isBroadcast && gap > expected && !agree(gap, expected);
}

void StreamClock::begin(Track& track, const Reference& reference) {
    track.first = reference.value;
    m_pid = m_pid == NULL_PID ? reference.pid : m_pid;
    rebase(track, reference);
}

/// Goes on evenly with a reference that has nothing to do with the one before.
void StreamClock::rebase(Track& track, const Reference& reference) {
    const std::uint64_t number = reference.position.packet;
    track.reference = reference.value;
    track.number = number;
    track.time = estimate(number);
    track.repeats = 0;
    if (reference.pid == m_pid) {
        m_start = m_packetTime == 0 ? number : m_start;
        anchor(number, track.time);
    }
}

/// A packet may be sent twice; a clock that stands still shows the same again and again.
void StreamClock::repeat(Track& track, const Reference& reference) {
    constexpr unsigned TWICE = 2;
    if (++track.repeats == TWICE) {
        ++track.errors;
        tell(EventKind::PcrFrozen, reference.pid, reference.position, estimate(reference.position.packet) - track.time,
             track.reference, track.reference);
    }
}

void StreamClock::proceed(Track& track, const Reference& reference, double gap, double expected) {
    const std::uint64_t number = reference.position.packet;
    const bool isFirst = m_packetTime == 0;
    tell(EventKind::PcrInterval, reference.pid, reference.position, gap, track.reference, reference.value);
    track.intervals = std::min(track.intervals + 1, REGULAR);
    if (reference.pid != m_pid || m_isBroadcast || standsStill(reference, track, gap, expected)) {
        rebase(track, reference);
    } else {
        if (m_pause > 0) {
            openBurst(reference.position, UNTIL_REFERENCE); // the counters tell whether anything is lost
        }
        const auto packets = static_cast<double>(number - track.number);
        if (!m_burst && !mayBeLoss(gap, packets * m_packetTime)) { // else packets may be missing between them
            learnRate(reference, gap / packets);
        }
        anchor(number, track.time + gap);
        track = {track.first, reference.value, number, m_elapsed, 0, track.intervals, track.sinceReview, track.errors};
        for (auto each = m_tracks.begin(); isFirst && each != m_tracks.end(); ++each) {
            each->second.time = estimate(each->second.number);
        }
    }
    if (reference.pid == m_pid) {
        m_pause = 0;
        m_hasCeased = false;
        m_end = track.intervals == REGULAR ? numberIn(number, LONGEST_GAP) : UINT64_MAX;
    }
}

/// Fewer packets in one interval may be due to a loss; in two they come at another rate.
void StreamClock::learnRate(const Reference& reference, double packetTime) {
    constexpr double MUCH = 1.5;
    constexpr double UNTIL_MANY_COUNTERS = 0.05;
    m_isSlower = m_packetTime != 0 && packetTime > MUCH * m_packetTime && !m_isSlower;
    if (m_isSlower) {
        m_doubtUntil = numberIn(reference.position.packet, UNTIL_MANY_COUNTERS);
    } else {
        m_packetTime = packetTime;
    }
}

/// Whether the references did not go on while time passed. The sender may have made a pause.
bool StreamClock::standsStill(const Reference& reference, const Track& track, double gap, double expected) {
    constexpr unsigned TWICE = 2;
    const bool isShort = !agree(gap, expected) && gap < expected;
    if (m_pause > 0 && isShort) {
        tell(EventKind::Pause, reference.pid, reference.position, m_pause);
    }
    return isShort && (m_pause > 0 || m_hasCeased || track.repeats >= TWICE);
}

void StreamClock::splice(Track& track, const Reference& reference) {
    tell(EventKind::PcrSplice, reference.pid, reference.position, 0, track.reference, reference.value);
    rebase(track, reference);
}

void StreamClock::jump(Track& track, const Reference& reference, double gap, double expected) {
    const Jump jump{reference.pid,
                    reference.position,
                    track.reference,
                    reference.value,
                    gap,
                    expected,
                    reference.position.packet - track.number};
    const bool isLoop = reference.value == track.first;
    const double length = secondsFrom(track.first, track.reference) + expected;
    if (m_packetTime != 0 && !isLoop) {
        openBurst(reference.position, UNTIL_COUNTERS);
        m_burst->jumps.push_back(jump);
    }
    rebase(track, reference);
    if (isLoop) {
        beginAnew(EventKind::Looped, jump, length);
    } else if (m_packetTime == 0) {
        tell(EventKind::PcrJump, jump.pid, jump.position, gap, jump.from, jump.to);
    } else {
        decideIfClear();
    }
}

/// Opens one unless one is open, and lets it last for so many seconds.
void StreamClock::openBurst(const Position& position, double seconds) {
    if (!m_burst) {
        const auto before = m_tracks.find(m_pid);
        m_burst = Burst{position, m_pid, before == m_tracks.end() ? Track{} : before->second, m_packetTime};
    }
    if (m_burst->jumps.empty()) {
        m_nextDecision = numberIn(position.packet, seconds);
    }
}

void StreamClock::takeStep(Pid pid, bool isBroken, const Position& position) {
    if (m_packetTime == 0 || (!m_burst && !isBroken)) {
        return;
    }
    if (!m_burst && isOfLastLoss(pid, position)) {
        return;
    }
    if (!m_burst) {
        openBurst(position, UNTIL_REFERENCE);
    }
    if (!m_burst->judged[pid]) {
        m_burst->judged.set(pid);
        ++(isBroken ? m_burst->broken : m_burst->intact);
        decideIfClear();
    }
}

/// A loss breaks the counter of each PID once, and is told of before all of them have come.
bool StreamClock::isOfLastLoss(Pid pid, const Position& position) {
    if (!m_lastLoss || m_judgedSinceLoss[pid] || estimate(position.packet) - *m_lastLoss > SAME_LOSS) {
        return false;
    }
    m_judgedSinceLoss.set(pid);
    return true;
}

void StreamClock::takeLossOfSync(const Position& position) {
    if (m_packetTime != 0) {
        openBurst(position, UNTIL_REFERENCE);
        m_burst->broken += MANY;
        decideIfClear();
    }
}

/// Decides before all counters have come.
void StreamClock::decideIfClear() {
    if (!m_burst->jumps.empty() && m_burst->broken >= MANY && m_burst->broken > 2 * m_burst->intact) {
        endBurst();
    }
}

/// Whether all references went on by the same time while counters broke: those that did not break may have come round.
bool StreamClock::wentOnTogether() const {
    constexpr double SAME = 0.1;
    const std::vector<Jump>& jumps = m_burst->jumps;
    const double lost = jumps.front().gap - jumps.front().expected;
    const auto isSameLoss = [lost](const Jump& each) { return std::abs(each.gap - each.expected - lost) < SAME; };
    return m_burst->broken > 1 && (jumps.size() > 1 || m_burst->broken >= MANY) &&
           std::all_of(jumps.begin(), jumps.end(), isSameLoss);
}

/// Whether the references may have gone on while packets were lost.
bool StreamClock::mayHaveLost(const Jump& jump) const {
    // Where packets come in time, what was lost has passed by the clock of this machine, too.
    const bool isInTime = m_lastArrival && m_ahead < LONGEST_GAP + 2 * DRIFT * m_elapsed;
    return jump.gap > jump.expected && jump.gap < LONGEST_LOSS && (jump.gap <= LONGEST_GAP || !isInTime);
}

void StreamClock::endBurst() {
    const bool areMostBroken = m_burst->broken > m_burst->intact;
    if (m_burst->jumps.empty()) {
        measureLoss(areMostBroken && m_burst->broken >= MANY);
    } else {
        judgeJumps(areMostBroken);
    }
    m_burst.reset();
    m_nextDecision = UINT64_MAX;
}

void StreamClock::judgeJumps(bool areMostBroken) {
    const auto own = std::find_if(m_burst->jumps.begin(), m_burst->jumps.end(),
                                  [this](const Jump& each) { return each.pid == m_pid; });
    const Jump main = own == m_burst->jumps.end() ? m_burst->jumps.front() : *own;
    if (mayHaveLost(main) && (areMostBroken || wentOnTogether())) {
        lose(main);
        return;
    }
    if (areMostBroken) {
        beginAnew(EventKind::NewStream, main, 0);
        return;
    }
    for (const Jump& each : m_burst->jumps) {
        if (each.gap <= LONGEST_GAP) {
            catchUp(each);
            continue;
        }
        ++m_tracks[each.pid].errors;
        tell(EventKind::PcrJump, each.pid, each.position, each.gap, each.from, each.to);
    }
}

/// The references went on while packets were lost.
void StreamClock::lose(const Jump& jump) {
    const double lost = jump.gap - jump.expected;
    m_elapsed += lost;
    for (const Jump& each : m_burst->jumps) {
        m_tracks[each.pid].time += lost;
        tell(EventKind::PcrInterval, each.pid, each.position, each.gap, each.from, each.to);
    }
    m_lastLoss = estimate(jump.position.packet);
    m_judgedSinceLoss = m_burst->judged;
    tell(EventKind::Loss, jump.pid, m_burst->begin, lost);
}

/// Nothing is lost: packets come at another rate.
void StreamClock::catchUp(const Jump& jump) {
    tell(EventKind::PcrInterval, jump.pid, jump.position, jump.gap, jump.from, jump.to);
    if (jump.pid == m_pid) {
        const double behind = jump.gap - jump.expected;
        m_elapsed += behind;
        m_tracks[jump.pid].time += behind;
        m_packetTime = jump.gap / static_cast<double>(jump.packets);
    }
}

/// Less than a tenth of a second is lost, or the arrival of packets has told.
void StreamClock::measureLoss(bool isLoss) {
    const auto now = m_tracks.find(m_pid);
    if (now == m_tracks.end() || m_pid != m_burst->pid || now->second.number == m_burst->before.number) {
        return; // no reference came
    }
    const Track& track = now->second;
    const double passed = secondsFrom(m_burst->before.reference, track.reference);
    const double lost = passed - static_cast<double>(track.number - m_burst->before.number) * m_burst->packetTime;
    // Counters of a BTS do not tell outages of two frames.
    constexpr double FRAME = 0.05;
    const double uncounted = passed - (track.time - m_burst->before.time);
    if (m_isBroadcast && uncounted > FRAME && passed < LONGEST_LOSS) {
        m_elapsed += uncounted;
        now->second.time += uncounted;
    }
    if (isLoss) {
        tell(EventKind::Loss, m_pid, m_burst->begin, std::max(0.0, lost));
    }
}

/// It is another source, or a file that begins again: what came before is no measure.
void StreamClock::beginAnew(EventKind kind, const Jump& jump, double amount) {
    Track track = m_tracks[jump.pid];
    track.first = kind == EventKind::Looped ? track.first : track.reference;
    m_tracks.clear();
    m_tracks[jump.pid] = track;
    m_burst.reset();
    m_nextDecision = UINT64_MAX;
    m_end = UINT64_MAX;
    ++m_newStreams;
    tell(kind, jump.pid, jump.position, amount, jump.from, jump.to);
}

/// Changes to a PID with better references, or with any when those that it follows have ceased.
void StreamClock::review(const Reference& reference) {
    const std::uint64_t number = reference.position.packet;
    if (reference.pid != m_pid && hasEnded(number) && isBestBut(m_pid, reference.pid)) {
        m_pid = reference.pid;
        m_start = m_packetTime == 0 ? number : m_start;
        m_hasCeased = false;
        m_end = UINT64_MAX;
        rebase(m_tracks[m_pid], reference);
    }
    if (m_packetTime == 0 || estimate(number) < m_nextReview) {
        return;
    }
    const auto own = m_tracks.find(m_pid);
    if (own != m_tracks.end() && !m_burst) {
        unsigned most = own->second.errors != 0 ? REGULAR - 1 : std::max(REGULAR - 1, 2 * own->second.sinceReview);
        for (const auto& [pid, track] : m_tracks) {
            if (pid != m_pid && track.errors == 0 && track.sinceReview > most) {
                most = track.sinceReview;
                m_pid = pid;
                m_end = UINT64_MAX;
            }
        }
    }
    for (auto& [pid, track] : m_tracks) {
        track.sinceReview = 0;
        track.errors = 0;
    }
    m_nextReview = estimate(number) + REVIEW_TIME;
}

/// Whether no other PID has fewer errors or more references.
bool StreamClock::isBestBut(Pid but, Pid pid) const {
    const Track& best = m_tracks.at(pid);
    return std::none_of(m_tracks.begin(), m_tracks.end(), [&best, but, this](const auto& each) {
        const Track& other = each.second;
        const bool isAlive = each.first != but && best.time - other.time < LONGEST_GAP && m_packetTime != 0;
        return isAlive &&
               (other.errors != best.errors ? other.errors < best.errors : other.sinceReview > best.sinceReview);
    });
}

void StreamClock::cease(const Position& position) {
    m_end = UINT64_MAX;
    m_hasCeased = true;
    if (const Track& track = m_tracks[m_pid]; track.repeats == 0) { // else it is known that they stand still
        tell(EventKind::PcrCeased, m_pid, position, estimate(position.packet) - track.time);
    }
}

/// Whether the references that it follows have ceased, or none came.
bool StreamClock::hasEnded(std::uint64_t number) const {
    const auto own = m_tracks.find(m_pid);
    if (own == m_tracks.end()) {
        return true;
    }
    return m_packetTime == 0 ? number - own->second.number >= LONGEST_GAP_IN_PACKETS
                             : estimate(number) - own->second.time > LONGEST_GAP;
}

void StreamClock::finish() {
    if (m_burst) {
        endBurst();
    }
}

void StreamClock::anchor(std::uint64_t number, double elapsed) {
    m_number = number;
    m_elapsed = elapsed;
}

/// The number of a packet that comes later.
std::uint64_t StreamClock::numberIn(std::uint64_t number, double seconds) const {
    constexpr double MOST = LONGEST_GAP_IN_PACKETS;
    return number + 1 + static_cast<std::uint64_t>(std::min(seconds / m_packetTime, MOST));
}

void StreamClock::tell(EventKind kind, Pid pid, const Position& position, double amount, std::uint64_t from,
                       std::uint64_t to) {
    m_events.push_back({kind, pid, position, amount, secondsOf(from), secondsOf(to)});
    m_events.back().at.seconds = seconds(position.packet);
}

std::optional<double> StreamClock::certainSeconds(std::uint64_t number) const {
    const std::optional<double> estimated = seconds(number);
    const bool waits = estimated && !m_isBroadcast && *estimated - m_elapsed <= LONGEST_GAP;
    return waits ? std::min(*estimated, m_elapsed) : estimated;
}

std::optional<double> StreamClock::duration(std::uint64_t packets) const {
    if (m_packetTime == 0 || packets <= m_start) {
        return std::nullopt;
    }
    return estimate(packets) * static_cast<double>(packets) / static_cast<double>(packets - m_start);
}

} // namespace inspect
