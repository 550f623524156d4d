#pragma once

#include "Wire.h"

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

/// Application information table of the Ginga-NCL application: a guide that starts with the service.
Bytes nclAit();

/// Application information table of the Ginga-J application: a poll that the viewer may open.
Bytes javaAit();

/// Software download trigger table: an update for one model of receiver.
Bytes sdtt();

/// DSM-CC section with stream descriptors: the time line of a programme, and an event on it.
Bytes streamEvents();

/// Time offset table: a Sunday evening, and the time zones of Brazil.
/// @param second seconds since the sample began, 0 to 59.
Bytes tot(unsigned second);

} // namespace sample
