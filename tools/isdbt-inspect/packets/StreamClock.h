#pragma once

#include "packets/Event.h"

#include <map>

namespace inspect {

/// The time in a stream, which its program clock references (PCR) count. It begins with the first of them and goes on
/// evenly where they jump, begin anew or cease. Time that passes while packets are lost is time, too.
///
/// Where packets come at a constant rate their number is the clock, and the PCRs only tell what is lost. Where they are
/// received while they are sent, time in which nothing comes passes, too.
class StreamClock {
public:
    /// @param events where it tells what happens
    explicit StreamClock(Events& events) : m_events(events) {}

    /// For a stream without PCR: bits a second, of packets of 188 bytes. Time begins with the first packet.
    void setBitRate(double bitRate);

    /// The stream is a broadcast transport stream (BTS), whose rate is known.
    /// @param lost packets so far that are missing among those that came
    void takeBroadcast(std::uint64_t lost);

    /// When the packet was received, by a clock that does not jump, in seconds; before take().
    void takeArrival(std::uint64_t number, double arrival);

    /// Takes the next packet.
    /// @param packet 188 bytes
    /// @param position of it; its time is written there
    void take(const std::uint8_t* packet, Position& position);

    /// Whether take() has nothing to do for a packet without PCR but to tell its time. Arrivals and a BTS may have.
    bool isSteady(std::uint64_t number) const {
        return number < m_nextDecision && number < m_end && !m_burst && !m_lag;
    }

    /// How the packet follows by its continuity_counter. Losses are told from jumps by them.
    void takeStep(Pid pid, bool isBroken, const Position& position);

    /// Packets were skipped that nobody could read.
    void takeLossOfSync(const Position& position);

    /// Whether it wants to know all steps, as it does for a while when one is broken; whether those are faults of their
    /// own is open as long as that.
    bool isJudging() const { return m_burst.has_value(); }

    /// Whether the counters of several PIDs are broken at once, and it is open whether time was lost with the packets;
    /// or fewer packets came than before, and the counters may soon tell why.
    bool maySeeLoss(std::uint64_t number) const { return number < m_doubtUntil || (m_burst && m_burst->broken > 1); }

    /// How often the stream was found to be another one, or to begin again.
    unsigned newStreams() const { return m_newStreams; }

    /// No packet follows.
    void finish();

    /// When a packet was sent, in seconds; nothing before two references have told the packet rate.
    std::optional<double> seconds(std::uint64_t number) const {
        return m_packetTime == 0 ? std::nullopt : std::optional(estimate(number));
    }

    /// How much time has passed for certain when a packet is sent: between two references packets may come faster than
    /// before. Nothing before two references have told the packet rate.
    std::optional<double> certainSeconds(std::uint64_t number) const;

    /// Number of the packet from which on times are estimates, until the next reference comes.
    std::uint64_t lastCertain() const { return m_number; }

    /// How long so many packets from the stream's first on take, in seconds; those before the first reference as the
    /// others do on average.
    std::optional<double> duration(std::uint64_t packets) const;

private:
    /// Seconds from one choice of the PID to the next.
    static constexpr double REVIEW_TIME = 1;

    /// What is known of the references of a PID.
    struct Track {
        std::uint64_t first = 0;     ///< since the stream began
        std::uint64_t reference = 0; ///< the last one, in units of 27 MHz
        std::uint64_t number = 0;    ///< of the packet that carried it
        double time = 0;             ///< when it was sent
        unsigned repeats = 0;        ///< how often it came again
        unsigned intervals = 0;      ///< so far, up to those that prove that they come regularly
        unsigned sinceReview = 0;    ///< references
        unsigned errors = 0;         ///< since the last review
    };

    struct Reference {
        Pid pid;
        std::uint64_t value;
        bool announced; ///< to be that of another clock
        Position position;
    };

    /// A reference that does not follow from the one before.
    struct Jump {
        Pid pid;
        Position position;
        std::uint64_t from;
        std::uint64_t to;
        double gap;      ///< between them
        double expected; ///< by the packets
        std::uint64_t packets;
    };

    /// Something happened: a loss, a jump, another stream?
    struct Burst {
        Position begin;
        Pid pid;           ///< that the clock followed before
        Track before;      ///< its references
        double packetTime; ///< before
        PidSet judged{};
        unsigned broken = 0; ///< PIDs
        unsigned intact = 0;
        std::vector<Jump> jumps{};
    };

    void takeReference(const Reference& reference);
    void begin(Track& track, const Reference& reference);
    void repeat(Track& track, const Reference& reference);
    void proceed(Track& track, const Reference& reference, double gap, double expected);
    void splice(Track& track, const Reference& reference);
    void jump(Track& track, const Reference& reference, double gap, double expected);
    void rebase(Track& track, const Reference& reference);
    void learnRate(const Reference& reference, double packetTime);
    bool mayBeLoss(double gap, double expected) const;
    bool isOfLastLoss(Pid pid, const Position& position);
    bool standsStill(const Reference& reference, const Track& track, double gap, double expected);
    void openBurst(const Position& position, double seconds);
    void decideIfClear();
    bool wentOnTogether() const;
    bool mayHaveLost(const Jump& jump) const;
    void endBurst();
    void judgeJumps(bool areMostBroken);
    void lose(const Jump& jump);
    void catchUp(const Jump& jump);
    void measureLoss(bool isLoss);
    void beginAnew(EventKind kind, const Jump& jump, double amount);
    void review(const Reference& reference);
    bool isBestBut(Pid but, Pid pid) const;
    void cease(const Position& position);
    bool hasEnded(std::uint64_t number) const;
    void anchor(std::uint64_t number, double elapsed);
    double estimate(std::uint64_t number) const {
        return m_elapsed + static_cast<double>(static_cast<std::int64_t>(number - m_number)) * m_packetTime;
    }
    std::uint64_t numberIn(std::uint64_t number, double seconds) const;
    void tell(EventKind kind, Pid pid, const Position& position, double amount, std::uint64_t from = 0,
              std::uint64_t to = 0);

    Events& m_events;
    Pid m_pid = NULL_PID; ///< whose references it follows
    std::map<Pid, Track> m_tracks;
    std::uint64_t m_start = 0;  ///< number of the packet at which the time begins
    std::uint64_t m_number = 0; ///< of a packet of which the time is known
    double m_elapsed = 0;       ///< when it was sent
    double m_packetTime = 0;    ///< seconds from packet to packet
    bool m_isSlower = false;    ///< the last two references told of much more
    std::uint64_t m_doubtUntil = 0;
    bool m_isBroadcast = false;
    std::uint64_t m_lost = 0; ///< packets of a BTS
    std::optional<Burst> m_burst;
    std::uint64_t m_nextDecision = UINT64_MAX; ///< number of the packet
    std::uint64_t m_end = UINT64_MAX;          ///< number of the packet at which the references have ceased
    bool m_hasCeased = false;
    double m_nextReview = REVIEW_TIME;
    std::optional<double> m_lastLoss; ///< when the packets came again, in seconds
    PidSet m_judgedSinceLoss;
    unsigned m_newStreams = 0;
    std::optional<double> m_lastArrival;
    double m_arrivalAtStart = 0; ///< when what has the time 0 would have been received
    double m_ahead = 0;          ///< how much faster than time the stream came
    double m_inTime = 0;         ///< when a packet came last that was not late
    std::optional<double> m_lag; ///< what the stream has fallen behind since, though packets came all the time
    double m_lagTime = 0;        ///< in which that happened
    double m_pause = 0;          ///< in which nothing came, since the last reference
};

} // namespace inspect
