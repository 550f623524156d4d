#include "packets/StreamClock.h"

#include <bitstream/mpeg/ts.h>

namespace inspect {

namespace {

constexpr std::uint64_t PCR_EXTENSION = 300;
constexpr std::uint64_t PCR_ROUND = (std::uint64_t{1} << 33U) * PCR_EXTENSION;
constexpr double PCR_RATE = 27e6;

/// References come at least every tenth of a second. What lies further apart is a jump.
constexpr double LONGEST_GAP = 1;

/// No multiplex carries more packets in that time.
constexpr std::uint64_t LONGEST_GAP_IN_PACKETS = 50000;

/// Length of the flags and the PCR behind adaptation_field_length.
constexpr std::uint8_t PCR_LENGTH = 7;

bool hasPcr(const std::uint8_t* packet) {
    return ts_get_adaptation(packet) >= PCR_LENGTH && tsaf_has_pcr(packet);
}

} // namespace

void StreamClock::take(const std::uint8_t* packet, std::uint64_t number) {
    if (!hasPcr(packet) || ts_get_transporterror(packet)) {
        return;
    }
    const Pid pid = ts_get_pid(packet);
    const std::uint64_t reference = tsaf_get_pcr(packet) * PCR_EXTENSION + tsaf_get_pcrext(packet);
    if (m_number == 0 || (pid != m_pid && hasEnded(number))) {
        follow(pid, reference, number);
    } else if (pid == m_pid && reference != m_reference) { // not a packet that is sent twice
        const double gap = static_cast<double>((reference + PCR_ROUND - m_reference) % PCR_ROUND) / PCR_RATE;
        if (gap > LONGEST_GAP || tsaf_has_discontinuity(packet)) {
            follow(pid, reference, number);
            return;
        }
        m_packetTime = gap / static_cast<double>(number - m_number);
        m_elapsed += gap;
        m_reference = reference;
        m_number = number;
    }
}

/// Whether the references that it follows have ceased.
bool StreamClock::hasEnded(std::uint64_t number) const {
    return m_packetTime == 0 ? number - m_number >= LONGEST_GAP_IN_PACKETS : estimate(number) - m_elapsed > LONGEST_GAP;
}

/// Goes on with a reference that has nothing to do with the one before.
void StreamClock::follow(Pid pid, std::uint64_t reference, std::uint64_t number) {
    m_elapsed = estimate(number);
    m_start = m_packetTime == 0 ? number : m_start;
    m_pid = pid;
    m_reference = reference;
    m_number = number;
}

double StreamClock::estimate(std::uint64_t number) const {
    return m_elapsed + static_cast<double>(static_cast<std::int64_t>(number - m_number)) * m_packetTime;
}

std::optional<double> StreamClock::seconds(std::uint64_t number) const {
    return m_packetTime == 0 ? std::nullopt : std::optional(estimate(number));
}

std::optional<double> StreamClock::duration(std::uint64_t packets) const {
    if (m_packetTime == 0 || packets <= m_start) {
        return std::nullopt;
    }
    return estimate(packets) * static_cast<double>(packets) / static_cast<double>(packets - m_start);
}

} // namespace inspect
