#pragma once

#include "packets/Event.h"
#include "sections/SectionGatherer.h"
#include "traffic/TrafficCounter.h"
#include "watching/Announcements.h"
#include "watching/Breaks.h"
#include "watching/Check.h"
#include "watching/SectionWatch.h"
#include "watching/Silences.h"

#include <set>
#include <string>
#include <vector>

namespace inspect {

/// Watches a stream for what breaks its limits. What happens is told to it as it happens; time passes by tick().
class Watch {
public:
    Watch(const TrafficCounter& traffic, const StreamClock& clock, const Profile& profile);
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    /// PIDs of which it wants each packet: always the same.
    const PidSet& pids() const { return m_gatherer.pids(); }

    /// Whether the next packet matters only if something happens with it: no alarm is to be told, and neither a silence
    /// nor a loss ends with it.
    bool isIdle() const { return !m_alarms.hasNews() && !m_resumesAt && !m_silence; }

    /// What happened with a packet.
    /// @param now may be later: some of it is understood only then
    void take(const Events& events, const Position& now);

    /// A packet of a PID whose sections nobody else gathers.
    /// @param packet 188 bytes
    void take(const std::uint8_t* packet, const Position& position);

    /// A section came whole, sound or not, whether or not it says something new.
    void take(const Section& section);

    /// The same section says something new, and is sound.
    void learn(const Section& section);

    /// Time has passed: what should have come by now and did not?
    void tick(const Position& now);

    /// The stream is received while it is sent, and nothing has come for so long.
    /// @param now as far as this machine's clock tells
    /// @param toldAfter that is told elsewhere, after so long
    void tickInSilence(const Position& now, double silence, std::optional<double> toldAfter = {});

    /// The stream ended: the same, and what was not decided yet.
    void finish(const Position& end);

    /// Alarms that began, became worse or ended since the last call.
    std::vector<Alarm> news() { return m_alarms.news(); }

    /// All alarms, those of one check and place as one.
    std::vector<Alarm> alarms() const { return m_alarms.all(); }

    /// What became of each check of the profile.
    std::vector<CheckResult> results() const;

private:
    void take(const Event& event, const Position& now);
    void takeBreak(const Event& event, const Position& now);
    void happened(const Event& event);
    void lost(const Breaks::Break& loss);
    void endSilence(const Position& now);
    void takeStopped(const Event& event);
    void forgetStopped();
    void decide(const Position& now, double until);
    void begin(const Position& at);
    void restart(const Position& at);
    void resume(const Position& now);
    void takeScrambled(const Event& event);
    void takeTables(const Section& section);
    void takeTable(const Section& section, const Check& check, const Check::TableOf& table);
    void expectAll(const Position& at);
    std::set<Spot> expected() const;
    std::string_view intervalOfMap(const Announcements::Program& program) const;
    bool isKnown(bool said) const;
    void checkPackets(std::string_view check);
    void checkUnreferenced(std::string_view check);
    std::string whyUnmeasured(const Check& check) const;

    const TrafficCounter& m_traffic;
    const StreamClock& m_clock;
    const Profile& m_profile;
    Alarms m_alarms;
    Silences m_silences;
    SectionWatch m_sections;
    Announcements m_announcements;
    SectionGatherer m_gatherer;
    std::optional<Position> m_start; ///< of what is watched now, once there is a clock
    Position m_now;
    Breaks m_breaks;
    std::optional<double> m_resumesAt{};
    bool m_isReceived = false;         ///< while it is sent
    std::optional<double> m_silence{}; ///< nothing has come for so long
    bool m_isSilenceTold = false;
    std::map<Pid, std::string_view> m_stopped; ///< PIDs whose PCR stands still or has ceased, and the check for that
    double m_slowUntil = 0;                    ///< whether the clock is in time again is not known before
    double m_nextLook = 0;                     ///< at the PIDs that nobody names, in seconds
    bool m_waited = false;                     ///< long enough for what tables say
    bool m_hasPcr = false;
    bool m_hasCycles = false;   ///< that a BIT declares
    bool m_isScrambled = false; ///< any packet
};

} // namespace inspect
