#pragma once

#include "packets/Event.h"
#include "packets/Pid.h"
#include "packets/StreamClock.h"
#include "traffic/Continuity.h"
#include "traffic/PidTraffic.h"

#include <array>
#include <memory>
#include <utility>

namespace inspect {

/// Looks at every packet of a stream.
class TrafficCounter {
public:
    /// @param events where it finds what the packet's reader and clock say of each packet, and tells what it finds
    /// @param clock of the stream, which wants to know what is missing
    TrafficCounter(Events& events, StreamClock& clock) : m_events(events), m_clock(clock) {}

    /// @param packet 188 bytes
    void take(const std::uint8_t* packet, const Position& position);

    /// The same for a packet that has payload alone, while the clock is steady and nothing has happened, if it goes on
    /// with those before on its PID.
    /// @return whether it was; else nothing is taken
    bool takeNext(const std::uint8_t* packet, const Position& position);

    /// From when on takeNext() does not do, in seconds of the stream; 0 before its clock is known.
    double endOfSecond() const { return m_endOfSecond.value_or(0); }

    /// No packet follows.
    void finish();

    /// A period begins for which it is measured anew how long things take. Counts go on.
    void beginPeriod();

    /// How many packets came on each PID since the last call, if any did.
    std::vector<std::pair<Pid, std::uint64_t>> news();

    /// Null when no packet came on it.
    const PidTraffic* of(Pid pid) const { return m_ofPids.at(pid) ? &m_ofPids.at(pid)->traffic : nullptr; }

    /// Where packets came so far.
    const std::vector<Pid>& pids() const { return m_pids; }

private:
    struct Stream {
        PidTraffic traffic;
        Continuity continuity;
        bool isScrambled = false;
        bool isWhole = false;           ///< since the second that goes on began
        std::uint64_t inThisSecond = 0; ///< packets
        std::uint64_t told = 0;         ///< of them all, by news()
    };

    Stream& streamOf(Pid pid, const Position& position);
    void heedFrom(std::size_t first);
    void heed(const Event& event);
    void settle();
    void forget();
    void passSeconds(double now);
    void endSecond();
    void follow(Stream& stream, const std::uint8_t* packet, const Position& position);
    void lookForScrambling(Stream& stream, const std::uint8_t* packet, const Position& position);
    void lookForPts(Stream& stream, const std::uint8_t* packet, const Position& position);
    void tell(EventKind kind, const std::uint8_t* packet, const Position& position, double amount = 0);

    Events& m_events;
    StreamClock& m_clock;
    Events m_open; ///< discontinuities that the clock may take for those of another stream
    unsigned m_streams = 0;
    std::array<std::unique_ptr<Stream>, PID_COUNT> m_ofPids;
    std::vector<Pid> m_pids;
    std::optional<double> m_endOfSecond;
};

} // namespace inspect
