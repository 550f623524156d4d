#include "history/History.h"

#include <algorithm>
#include <cmath>

namespace inspect {

void History::Sections::add(const Sections& more) {
    sections += more.sections;
    distinct += more.distinct;
    crcErrors += more.crcErrors;
    rejected += more.rejected;
    version = more.version == NO_VERSION ? version : more.version;
}

void History::Happenings::add(const Happenings& more) {
    count += more.count;
    most = std::max(most, more.most);
}

void History::take(Pid pid, std::uint64_t packets, const Position& last) {
    add(m_packets.at(pid), {stepOf(last), static_cast<std::uint32_t>(packets)});
}

void History::take(const Section& section, const std::optional<SeenSections::News>& news) {
    Sections cell{stepOf(section.position()), 1};
    if (!news) {
        cell.crcErrors = 1;
    } else {
        const std::optional<LongHeader> header = section.longHeader();
        cell.version = header ? static_cast<std::int16_t>(header->version) : Sections::NO_VERSION;
        cell.distinct = *news == SeenSections::News::Repetition ? 0 : 1;
    }
    take(section, cell);
}

void History::reject(const Section& section) {
    Sections cell{stepOf(section.position())};
    cell.rejected = 1;
    take(section, cell);
}

void History::take(const Section& section, const Sections& cell) {
    const TableOfPid table{section.pid().value_or(NULL_PID), section.tableId()};
    if (m_tables.size() < MOST_TABLES || m_tables.count(table) != 0) {
        add(m_tables[table], cell);
    }
}

void History::take(const Event& event) {
    add(m_happenings[{event.kind, event.pid}], {stepOf(event.at), 1, event.amount});
    if (event.kind == EventKind::PcrInterval || event.kind == EventKind::PtsInterval) {
        return;
    }
    if (m_events.size() < MOST_EVENTS) {
        m_events.push_back(event);
    } else {
        ++m_eventsLeftOut;
    }
}

/// Makes room for it, if need be.
std::uint32_t History::stepOf(const Position& position) {
    constexpr double LATEST = 1e10; // seconds, three centuries
    const double seconds = std::clamp(position.seconds.value_or(0), 0.0, LATEST);
    while (seconds >= m_length * MOST_STEPS) {
        lengthen();
    }
    return static_cast<std::uint32_t>(seconds / m_length);
}

/// Where the clock's estimate was ahead of the next reference, time seems to go back a little.
template <class Cell> void History::add(Course<Cell>& course, const Cell& cell) {
    if (!course.empty() && course.back().step >= cell.step) {
        course.back().add(cell);
        return;
    }
    course.push_back(cell);
    if (++m_cells > MOST_CELLS) {
        lengthen();
    }
}

void History::lengthen() {
    m_length *= 2;
    m_cells = 0;
    for (auto& course : m_packets) {
        halve(course);
    }
    for (auto& [table, course] : m_tables) {
        halve(course);
    }
    for (auto& [event, course] : m_happenings) {
        halve(course);
    }
}

template <class Cell> void History::halve(Course<Cell>& course) {
    auto last = course.begin();
    for (auto each = course.begin(); each != course.end(); ++each) {
        each->step /= 2;
        if (each != last && each->step == last->step) {
            last->add(*each);
        } else if (each != course.begin()) {
            *++last = *each;
        }
    }
    if (!course.empty()) {
        course.erase(last + 1, course.end());
    }
    m_cells += course.size();
}

} // namespace inspect
