#pragma once

#include "Faults.h"

namespace sample {

/// A fault and its time in a stream.
struct FaultAt {
    Fault fault;
    Ticks begin;
    Ticks end;
};

/// A fault that begins and lasts as it does by itself.
/// @throws std::invalid_argument when there is none of this name
FaultAt faultAt(const std::string& name);
FaultAt faultAt(const std::string& name, Ticks begin);
FaultAt faultAt(const std::string& name, Ticks begin, Ticks end);

/// A carousel, and how long all its blocks take.
struct CarouselOnAir {
    CarouselWriter carousel;
    Ticks turn;
};

/// That of the applications.
CarouselOnAir applicationsOnAir();

/// The multiplex as it is on air for hours, or with faults. The same bytes each time.
class Broadcast {
public:
    static constexpr unsigned LOWEST_BIT_RATE = 600000;
    static constexpr unsigned USUAL_BIT_RATE = 1000000;

    explicit Broadcast(unsigned bitRate = USUAL_BIT_RATE, std::vector<FaultAt> faults = {},
                       const CarouselOnAir& carousel = applicationsOnAir());

    /// When the next packet is sent, from the beginning.
    Ticks now() const { return m_multiplexer.now(); }

    /// The next packet; where a fault changes it, it can also be none, several, or other bytes.
    const Bytes& next();

private:
    void addTables();
    void addStreams(unsigned bitRate);
    void disturb();

    Multiplexer m_multiplexer;
    std::vector<FaultAt> m_faults;
    Bytes m_sent;
};

/// So much of a broadcast.
Bytes broadcast(Ticks duration, std::vector<FaultAt> faults = {});

} // namespace sample
