#pragma once

#include "multiplex/CarouselStreams.h"

#include <map>

namespace inspect {

/// Where the blocks of carousels come by what program maps say: taps name a stream by its association tag.
class BlockStreams {
public:
    /// Which transport stream this is.
    void learn(std::uint16_t transportStream) { m_transportStream = transportStream; }

    /// A program map came.
    void learn(std::uint16_t program, const Fields& programMap);

    /// The PID of a tag in a carousel on a PID; nothing when no program map tells.
    std::optional<Pid> find(Pid carousel, std::uint16_t associationTag) const;

private:
    struct Stream {
        Pid pid;
        std::optional<std::int64_t> componentTag;
        std::vector<std::uint16_t> associationTags;
    };

    struct Program {
        std::vector<Stream> streams;
        std::vector<DeferredTags> deferred;
    };

    std::optional<Pid> find(const Program& program, std::uint16_t associationTag) const;
    static std::optional<Pid> own(const Program& program, std::uint16_t associationTag);

    std::optional<std::uint16_t> m_transportStream;
    std::map<std::uint16_t, Program> m_programs; ///< by program_number
};

} // namespace inspect
