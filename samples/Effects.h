#pragma once

#include "Faults.h"
#include "Station.h"

#include <bitstream/mpeg/psi.h>

namespace sample {

/// Each so many-th time.
inline auto every(unsigned number) {
    return [number, count = 0U]() mutable { return count++ % number == 0; };
}

/// An effect on the sections of a PID.
template <class Change> auto sections(std::uint16_t pid, Change change) {
    return [pid, change](const Moment& moment, std::uint16_t ofPid, Bytes& section) mutable {
        if (ofPid == pid) {
            change(moment, section);
            if (!section.empty()) {
                psi_set_crc(section.data());
            }
        }
    };
}

/// Damages one of so many sections of a PID.
inline auto damage(std::uint16_t pid, unsigned number) {
    return [pid, due = every(number)](const Moment&, std::uint16_t ofPid, Bytes& section) mutable {
        if (ofPid == pid && due()) {
            section.back() ^= 0x01U;
        }
    };
}

/// Sends no section of a PID.
inline auto stop(std::uint16_t pid) {
    return sections(pid, [](const Moment&, Bytes& section) { section.clear(); });
}

/// An effect on the packets of a PID, in the multiplexer.
template <class Change> auto packets(std::uint16_t pid, Change change) {
    return [pid, change](const Moment& moment, Packet& packet) mutable {
        if (ts_get_pid(packet.data()) == pid) {
            change(moment, packet);
        }
    };
}

/// Sends null packets in the place of those of a PID.
inline auto silence(std::uint16_t pid) {
    return packets(pid, [](const Moment&, Packet& packet) { packet = nullPacket(); });
}

inline auto scramble(std::uint16_t pid) {
    constexpr std::uint8_t EVEN_KEY = 2;
    return packets(pid, [](const Moment&, Packet& packet) { ts_set_scrambling(packet.data(), EVEN_KEY); });
}

/// The section stays the current one.
inline void setVersion(Bytes& section, unsigned version) {
    psi_set_version(section.data(), static_cast<std::uint8_t>(version));
    psi_set_current(section.data());
}

/// Every other section of a PID has another version.
inline auto flap(std::uint16_t pid, unsigned sectionsOfVersion = 1) {
    return sections(pid, [count = 0U, sectionsOfVersion](const Moment&, Bytes& section) mutable {
        setVersion(section, count++ / sectionsOfVersion % 2 == 0 ? 1 : 0);
    });
}

inline Fault inSections(Fault fault, std::function<void(const Moment&, std::uint16_t pid, Bytes& section)> effect) {
    fault.section = std::move(effect);
    return fault;
}

inline Fault inPackets(Fault fault, std::function<void(const Moment&, Packet& packet)> effect) {
    fault.packet = std::move(effect);
    return fault;
}

inline Fault inWhatIsSent(Fault fault, std::function<void(const Moment&, Bytes& sent)> effect) {
    fault.sent = std::move(effect);
    return fault;
}

} // namespace sample
