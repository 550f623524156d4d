#pragma once

#include "counting/Statistics.h"
#include "describing/CodingGuess.h"
#include "following/Following.h"
#include "multiplex/CurrentSections.h"
#include "packets/PacketReader.h"
#include "parsing/SectionParser.h"
#include "reports/Renderer.h"
#include "sections/SectionGatherer.h"
#include "sections/SeenSections.h"

#include <set>

namespace inspect {

/// What of a stream is of interest.
struct Interest {
    PidSet pids;                   ///< to look at beside those that are signalled
    std::set<std::uint8_t> tables; ///< the table_id of those to show; all when there is none
};

/// Whether a section that comes again is shown again.
enum class Repetitions { Hidden, Shown };

/// Leads one input through the rooms: packets, sections, parsing, following, describing, checking; and tells what
/// comes out.
class Inspector {
public:
    /// @param interest what of the input is shown
    /// @param charset what the texts are in
    Inspector(Renderer& renderer, const Interest& interest, const Charset& charset);

    /// Shows what a transport stream carries, and a summary at its end.
    /// @throws InputError
    void run(Input& input);

    /// The same for some packets of a stream: nobody misses others.
    /// @throws InputError
    void runPackets(Input& input);

    /// The same for an input of sections, one behind the other. What is damaged is shown, too: as the library takes it.
    /// @throws InputError
    void runSections(Input& input, Repetitions repetitions);

    /// Whether something was rejected or damaged, or does not fit together.
    bool foundFault() const { return m_foundFault; }

    /// Whether there was any section of a table that the library knows.
    bool foundKnownTable() const { return m_foundKnownTable; }

private:
    void take(const Section& section);
    bool isOfInterest(std::uint8_t tableId) const;
    void show(const Section& section, SeenSections::News news);
    void takeAsItIs(const Section& section, Repetitions repetitions);
    Summary summary(const PacketReader& packets) const;
    void read(Input& input, std::set<std::uint8_t> expected);
    std::set<std::uint8_t> expected() const;
    void finish(Summary last, const Input& input, std::set<std::uint8_t> expected);

    Renderer& m_renderer;
    const Interest& m_interest;
    const Charset& m_charset;
    CodingGuess m_coding;
    SectionGatherer m_gatherer;
    SeenSections m_seen;
    SeenSections m_seenOfOthers; ///< tables that the library does not understand; they must not displace the others
    Statistics m_statistics;
    Following m_following;
    CurrentSections m_current;
    std::uint64_t m_shown = 0;
    std::uint64_t m_rejected = 0;
    bool m_foundFault = false;
    bool m_foundKnownTable = false;
};

} // namespace inspect
