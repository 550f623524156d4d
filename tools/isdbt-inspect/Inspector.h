#pragma once

#include "Interest.h"
#include "Range.h"
#include "carousels/CarouselCollector.h"
#include "counting/Statistics.h"
#include "describing/CodingGuess.h"
#include "describing/Conventions.h"
#include "exporting/Exporter.h"
#include "following/Following.h"
#include "history/History.h"
#include "inputs/Timetable.h"
#include "multiplex/CurrentSections.h"
#include "multiplex/PresentEvents.h"
#include "packets/PacketReader.h"
#include "packets/WallClock.h"
#include "parsing/SectionParser.h"
#include "reports/Renderer.h"
#include "sections/SectionGatherer.h"
#include "sections/SeenSections.h"
#include "traffic/TrafficCounter.h"
#include "transmission/TransmissionReader.h"
#include "watching/Watch.h"

#include <memory>

namespace inspect {

/// Whether a section that comes again is shown again.
enum class Repetitions { Hidden, Shown };

/// Leads one input through the rooms: packets, sections, transmission, parsing, following, describing, checking; and
/// tells what comes out.
class Inspector {
public:
    /// @param interest what of the input is shown
    /// @param conventions how the station writes texts and times
    /// @param exporter is given each section that is shown, too; may be null
    /// @param times what is to be done while packets come
    Inspector(Renderer& renderer, const Interest& interest, const Conventions& conventions,
              Exporter* exporter = nullptr, const Times& times = {});

    /// For streams without PCR: bits a second, of packets of 188 bytes.
    void setBitRate(double bitRate) { m_clock.setBitRate(bitRate); }

    /// Tells of this part of the input alone.
    void setRange(const Range& range);

    /// Writes out what carousels bring. What is to be shown has to include carousels.
    void extractWith(CarouselListener& extractor) { m_carousels.tell(extractor); }

    /// Shows what a transport stream carries, and a summary at its end, though it may end early.
    /// @throws InputError when it cannot be read to its end
    void run(Input& source);

    /// The same for some packets of a stream: nobody misses others.
    /// @throws InputError
    void runPackets(Input& source);

    /// The same for an input of sections, one behind the other. What is damaged is shown, too: as the library takes it.
    /// @throws InputError
    void runSections(Input& source, Repetitions repetitions);

    /// Whether something was rejected or damaged, or does not fit together.
    bool foundFault() const { return m_foundFault; }

    /// Whether there was any section of a table that the library knows.
    bool foundKnownTable() const { return m_foundKnownTable; }

private:
    /// A section, what the library says to it, and what is made of that.
    struct Reading {
        const Section& section;
        ParsedSection parsed;
        SectionReport report;
    };

    /// How far an input is taken.
    struct Reached {
        std::uint64_t packets = 0;
        std::uint64_t offset = 0; ///< of the last of them
        std::uint64_t skippedBytes = 0;
        std::size_t spacing = 0;
        const PacketReader* reader = nullptr; ///< null before the first packet
    };

    static Reached reachedBy(const PacketReader& packets);
    Position look(const std::uint8_t* packet, const PacketReader& packets);
    bool takeNext(const std::uint8_t* packet, const PacketReader& packets);
    std::optional<double> nextDue(const PacketReader& packets) const;
    void take(const std::uint8_t* packet, const std::uint8_t* trailer, const Position& position);
    void read(const std::uint8_t* packet, const std::uint8_t* trailer, const Position& position);
    void take(const Section& section);
    void count(const Section& section, const std::optional<SeenSections::News>& news);
    bool isFirstSince(const Section& section);
    Reading read(const Section& section, SeenSections::News news);
    void learn(const Reading& reading);
    void learnBlockStreams(const SectionReport& report);
    void show(const Reading& reading);
    void takeAsItIs(const Section& section, Repetitions repetitions);
    std::vector<PidStatistics> statisticsOf(const Traffic& traffic) const;
    std::optional<double> end(std::uint64_t packets) const;
    Summary summary(const Reached& reached);
    Summary summary(const Reached& reached, const Input& input);
    void beginRange(const Reached& reached);
    void endRange(const Reached& reached);
    Summary inRange(const Summary& whole, bool ended) const;
    void addCarousels(Summary& summary, const Multiplex& multiplex);
    bool attend(const PacketReader& packets, const Input& input, const std::set<std::uint8_t>& expected);
    bool keepTime(const PacketReader& packets, const Input& input, double now);
    void gather(const PidSet& pids);
    void recordPackets();
    void watch(const Position& now);
    void tellAlarms();
    void tellTime(SectionReport& report);
    void setWallClock();
    void inspect(Input& source, std::set<std::uint8_t> expected);
    std::set<std::uint8_t> expected() const;
    template <class Tell>
    void tellAll(Summary& last, const Input& input, const std::set<std::uint8_t>& expected, const Tell& tell);
    void finish(Summary last, const Input& input, const std::set<std::uint8_t>& expected);
    void complain(const PacketReader& packets, const Input& input) const;

    Renderer& m_renderer;
    const Interest& m_interest;
    const Conventions& m_conventions;
    Exporter* m_exporter;
    CodingGuess m_coding;
    WallClock m_wallClock;

    /// What time it is by the station's clock, and where that was said.
    struct LocalTime {
        double seconds; ///< of the stream
        std::int32_t local;
        std::int64_t utc; ///< as it was read
    };
    std::optional<LocalTime> m_localTime;
    std::optional<WallTime> m_begin; ///< the first time that was known
    SectionGatherer m_gatherer;
    PidSet m_read;   ///< PIDs of which packets are read by somebody, not only their headers; see gather()
    Events m_events; ///< that nobody has looked at
    StreamClock m_clock{m_events};
    TrafficCounter m_traffic{m_events, m_clock};
    Watch m_watch{m_traffic, m_clock, m_interest.limits};
    double m_nextTick = 0;           ///< in seconds of the stream
    Position m_now;                  ///< that of the last packet
    std::optional<double> m_nextDue; ///< as nextDue() said last
    TransmissionReader m_transmission;
    PresentEvents m_presentEvents;
    SeenSections m_seen;
    SeenSections m_seenSince;    ///< since those are shown that come
    SeenSections m_seenOfOthers; ///< tables that the library does not understand; they must not displace the others
    Statistics m_statistics;
    Following m_following;
    CurrentSections m_current;
    CarouselCollector m_carousels;
    std::unique_ptr<History> m_history; ///< null when nobody asks for it
    std::uint32_t m_step = 0;           ///< of the history, that of the packets that are not recorded
    Times m_times;
    Timetable m_timetable;
    Range m_range;
    std::optional<Summary> m_before; ///< what came before the range; nothing as long as it has not begun
    Stopwatch m_arrival;

    /// When the last packets came.
    struct {
        std::uint64_t packets = 0;
        double seconds = 0; ///< of arrival
    } m_heard;

    double m_nextUpdate = 0; ///< in seconds of arrival
    std::uint64_t m_shown = 0;
    std::uint64_t m_rejected = 0;
    std::uint64_t m_notChosen = 0;
    bool m_isDated = false; ///< the stream's clock is known
    bool m_isLive = false;  ///< this machine's clock shows the time of the input
    bool m_foundFault = false;
    bool m_foundKnownTable = false;
};

} // namespace inspect
