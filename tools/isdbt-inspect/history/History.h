#pragma once

#include "packets/Event.h"
#include "sections/Section.h"
#include "sections/SeenSections.h"

#include <array>
#include <map>
#include <utility>
#include <vector>

namespace inspect {

/// What came when, in steps of time. They are short as long as the stream is; with it they grow, so that a day takes no
/// more memory than a minute. What comes before the stream's clock is known came in the first step.
class History {
public:
    static constexpr std::uint32_t MOST_STEPS = 4096;
    static constexpr std::size_t MOST_CELLS = std::size_t{1} << 19U; ///< of all courses together
    static constexpr std::size_t MOST_TABLES = 4096;
    static constexpr std::size_t MOST_EVENTS = 10000;

    /// What came of a PID in a step.
    struct Packets {
        std::uint32_t step;
        std::uint32_t packets = 1;

        void add(const Packets& more) { packets += more.packets; }
    };

    /// What came of a table on a PID in a step.
    struct Sections {
        static constexpr std::int16_t NO_VERSION = -1;

        std::uint32_t step;
        std::uint32_t sections = 0;
        std::uint32_t distinct = 0; ///< of them, those that say something new
        std::uint32_t crcErrors = 0;
        std::uint32_t rejected = 0;        ///< of the distinct ones
        std::int16_t version = NO_VERSION; ///< of the last one

        void add(const Sections& more);
    };

    /// How often something happened, or was measured, in a step.
    struct Happenings {
        std::uint32_t step;
        std::uint32_t count;
        double most; ///< the largest amount

        void add(const Happenings& more);
    };

    /// What came in each step in which anything did.
    template <class Cell> using Course = std::vector<Cell>;
    using TableOfPid = std::pair<Pid, std::uint8_t>;
    using EventOfPid = std::pair<EventKind, std::optional<Pid>>;

    /// So many packets came, the last of them at a position, and the others in its step, too.
    void take(Pid pid, std::uint64_t packets, const Position& last);

    /// A section came in packets.
    /// @param news how it compares with its place; nothing when it is not sound
    void take(const Section& section, const std::optional<SeenSections::News>& news);

    /// The library did not take the section, which came last.
    void reject(const Section& section);

    /// Something happened, or was measured.
    void take(const Event& event);

    double stepLength() const { return m_length; } ///< in seconds

    /// In which step a position is, and when that ends, in seconds. With the next that is taken they may grow.
    std::uint32_t stepOf(const Position& position);
    double endOfStep(const Position& position) { return (stepOf(position) + 1) * m_length; }

    const std::array<Course<Packets>, PID_COUNT>& packets() const { return m_packets; }
    const std::map<TableOfPid, Course<Sections>>& tables() const { return m_tables; }
    const std::map<EventOfPid, Course<Happenings>>& happenings() const { return m_happenings; }

    /// The first of those that happen rarely.
    const Events& events() const { return m_events; }
    std::uint64_t eventsLeftOut() const { return m_eventsLeftOut; }

private:
    template <class Cell> void add(Course<Cell>& course, const Cell& cell);
    void take(const Section& section, const Sections& cell);
    void lengthen();
    template <class Cell> void halve(Course<Cell>& course);

    double m_length = 1.0 / 64;
    std::size_t m_cells = 0;
    std::array<Course<Packets>, PID_COUNT> m_packets;
    std::map<TableOfPid, Course<Sections>> m_tables;
    std::map<EventOfPid, Course<Happenings>> m_happenings;
    Events m_events;
    std::uint64_t m_eventsLeftOut = 0;
};

} // namespace inspect
