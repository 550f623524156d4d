#pragma once

#include "describing/Charset.h"
#include "following/Following.h"
#include "packets/PacketReader.h"
#include "parsing/SectionParser.h"
#include "rendering/Renderer.h"
#include "sections/SectionGatherer.h"
#include "sections/SeenSections.h"

namespace inspect {

/// Leads a stream through the rooms: packets, sections, parsing, following, describing, rendering.
class Inspector {
public:
    /// @param byHand PIDs to look at beside those that are signalled
    /// @param charset what the texts are in
    Inspector(Renderer& renderer, const PidSet& byHand, const Charset& charset);

    /// Shows what the stream carries, and a summary at its end.
    /// @throws InputError
    void run(Input& input);

    /// Whether something was rejected or damaged.
    bool foundFault() const { return m_foundFault; }

private:
    void take(const Section& section);
    Summary summary(const PacketReader& packets) const;

    Renderer& m_renderer;
    const Charset& m_charset;
    SectionGatherer m_gatherer;
    SeenSections m_seen;
    Following m_following;
    std::uint64_t m_shown = 0;
    std::uint64_t m_rejected = 0;
    bool m_foundFault = false;
};

} // namespace inspect
