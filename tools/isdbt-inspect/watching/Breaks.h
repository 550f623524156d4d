#pragma once

#include "packets/Event.h"

#include <deque>

namespace inspect {

/// Puts broken continuity_counters together that one loss of packets explains: each PID's packet before came before the
/// loss.
class Breaks {
public:
    struct Break {
        Position begin;         ///< the first packet behind it
        double seconds = 0;     ///< of the stream that are lost, as far as its clock tells
        bool isOfClock = false; ///< the clock has told that packets of most PIDs are lost
        Events counters{};      ///< broken ones

        /// Else each counter is broken for a reason of its own.
        bool isLoss() const;

        /// On how many.
        std::size_t pids() const;

        /// Packets, by the counters: at least so many.
        double lost() const;
    };

    /// A counter is broken.
    /// @return whether that has just shown a loss
    bool take(const Event& discontinuity);

    /// The clock tells of a loss.
    void takeLoss(const Event& loss);

    /// It is told already that nothing came before this packet.
    void takeGap(const Position& end);

    /// Whether something has happened that is told already.
    bool explainsAsGap(const Event& event) const;

    /// What follows is another stream.
    void clear();

    /// Whether a counter is broken of which it is open whether others were at the same time.
    bool isOpen() const { return !m_waiting.empty(); }

    /// Whether no more can be remembered of what was not asked for yet.
    bool isFull() const { return m_count >= CAPACITY; }

    /// Those that began before a time, in seconds. None of them comes again.
    std::vector<Break> decided(double until);

private:
    static constexpr std::size_t CAPACITY = 4096;

    std::deque<Break> m_waiting;
    std::size_t m_count = 0;        ///< broken counters of these
    std::optional<Position> m_last; ///< begin of the last loss that is told
    bool m_isGap = false;           ///< that it is rather a time in which nothing came
};

} // namespace inspect
