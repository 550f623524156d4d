#pragma once

#include "packets/StreamClock.h"
#include "support/Bytes.h"
#include "watching/Watch.h"

#include <functional>
#include <string>
#include <vector>

/// A stream that is watched: what it carries is said tenth by tenth of a second.
class Watched {
public:
    explicit Watched(const std::string& profile) : m_profile(inspect::Profile::named(profile)) {}

    /// From the current time on, in each tenth of a second until then.
    Watched& until(double seconds, const std::function<void(double)>& carry = {});

    /// Nothing comes until then, though it is waited for.
    Watched& silentUntil(double seconds);

    /// A section that comes now.
    void section(inspect::Pid pid, const ByteVector& bytes);

    /// A packet that comes now.
    void packet(inspect::Pid pid);

    /// What happens now.
    void happens(inspect::EventKind kind, std::optional<inspect::Pid> pid = {}, double amount = 0, double from = 0,
                 double to = 0);

    /// A counter is broken now.
    /// @param ago packets since the last one of the same PID
    void breaks(inspect::Pid pid, unsigned lost, std::uint64_t ago);

    /// A loss is understood now; what follows is that much later.
    void lose(double seconds);

    /// What was said of a check: "20.3 begin warning: no PAT for ...".
    std::vector<std::string> said(const std::string& check) const;

    /// The checks of all alarms, each once.
    std::vector<std::string> checks() const;

    /// "ok", "2 alarms" or "none came"
    std::string result(const std::string& check) const;

    const inspect::Watch& watch() const { return m_watch; }

private:
    inspect::Position position() const { return {m_packet, m_packet * 188, m_tenths / 10.0}; }

    void listen();

    inspect::Profile m_profile;
    inspect::Events m_events;
    inspect::StreamClock m_clock{m_events};
    inspect::TrafficCounter m_traffic{m_events, m_clock};
    inspect::Watch m_watch{m_traffic, m_clock, m_profile};
    int m_tenths = 0;
    std::uint64_t m_packet = 1;
    std::vector<inspect::Alarm> m_said;
};

/// Whether something that comes each so many tenths of a second comes at a time.
bool each(int tenths, double seconds);

/// A PMT of a program: its PCR PID, and what it consists of.
/// @param streams in hexadecimal: "1B E111 F000"
ByteVector pmt(QUOR_U16 program, const std::string& clock, const std::string& streams, unsigned version = 0);

/// A PAT: "E6A0 E101".
ByteVector pat(const std::string& programs, unsigned version = 0);

/// A TOT of a day of 2025, at this second of it.
ByteVector tot(unsigned second);
