#pragma once

#include "Multiplexer.h"

#include <string>

namespace sample {

/// The time in a stream, and when a fault of it begins and ends.
struct Moment {
    Ticks now;
    Ticks begin;
    Ticks end;
};

/// What a fault has to be for who watches the stream.
enum class Reported {
    Yes,
    No,  ///< it is none
    Live ///< by who sees packets come
};

/// What can go wrong with a stream, and where it does. What an effect remembers is its own: each fault of a stream is a
/// copy.
struct Fault {
    std::string name;
    std::string indicator; ///< of TR 101 290, by number and name; nothing when it has none
    std::string help;
    Reported reported = Reported::Yes;
    unsigned seconds = 0; ///< that it lasts, unless told otherwise; 0: it happens once, or from then on
    unsigned begins = 20; ///< second in which it does, unless told otherwise

    /// In the multiplexer, for sections, and for packets that are not counted yet.
    std::function<void(const Moment&, std::uint16_t pid, Bytes& section)> section{};
    std::function<void(const Moment&, Packet& packet)> packet{};

    /// On the way: for what is sent in the place of one packet.
    std::function<void(const Moment&, Bytes& sent)> sent{};

    bool sinceStart = false; ///< its effect is asked from the beginning of the stream
};

/// Those that keep an application from starting, from the PMT to its files: from the beginning, and with names that
/// begin with "app-".
std::vector<Fault> applicationFaults();

/// All that there are.
const std::vector<Fault>& faults();

/// @throws std::invalid_argument when there is none of this name
const Fault& faultNamed(const std::string& name);

} // namespace sample
