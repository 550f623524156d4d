#pragma once

#include "Station.h"
#include "Wire.h"

#include <optional>

/// The tables of the sample, one function each: complete sections.
namespace sample {

/// Program association table: both services and the PID of the network information table.
Bytes pat();

/// Program map table of the service for the living room: video, audio, captions, and an application with its carousel
/// and its events.
Bytes hdPmt();

/// Program map table of the service for the phone.
Bytes oneSegPmt();

/// Network information table: one transport stream on a UHF channel.
Bytes nit();

/// Service description table.
Bytes sdt();

/// How the applications are announced. What stands here is right; faults say it otherwise.
struct Signalling {
    std::optional<std::uint8_t> controlCode{}; ///< in the place of each one's own
    std::uint8_t label = 1;                    ///< transport_protocol_label by which they are to be fetched
    std::uint8_t componentTag = CAROUSEL_TAG;
    std::optional<std::uint16_t> service{}; ///< which has the carousel, where it is another one
    std::uint8_t profileVersion = 1;        ///< the major one
    unsigned version = 0;                   ///< of the tables
};

/// Application information table of the Ginga-NCL application: a guide that starts with the service.
Bytes nclAit(const Signalling& signalling = {});

/// Application information table of the Ginga-J application: a poll that the viewer may open.
Bytes javaAit(const Signalling& signalling = {});

/// Software download trigger table: an update for one model of receiver.
Bytes sdtt();

/// DSM-CC section with stream descriptors: the time line of a programme, and an event on it.
Bytes streamEvents(std::uint16_t eventId = GOAL_EVENT);

/// Time offset table: a Sunday, and the time zones of Brazil.
Bytes tot(unsigned secondOfDay);

/// Event information table of a service: the programme of the hour (section 0), and that of the next (section 1).
Bytes eit(std::uint16_t serviceId, unsigned secondOfDay, unsigned section);

/// Broadcaster information table: how often the station sends its tables.
Bytes bit();

} // namespace sample
