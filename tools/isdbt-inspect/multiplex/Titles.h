#pragma once

#include "multiplex/Multiplex.h"

namespace inspect {

// What a person calls a part of the multiplex.

/// "Transport stream", of which nothing is known
std::string titleOf(const Multiplex& multiplex);

/// "Network 0x0735 (1845)"
std::string titleOf(const Network& network);

/// "Transport stream 0x0735 (1845)"
std::string titleOf(const TransportStream& stream);

/// "Service 0xE6A0 (59040)"
std::string titleOf(const Service& service);

/// "Component PID 0x0111"
std::string titleOf(const Component& component);

/// "PID 0x0131"; empty for what did not come in packets
std::string titleOf(const Unclaimed& unclaimed);

/// Of a table that is a part by itself: "AIT of Ginga-NCL (0x0001)", "Time", "Download for maker 0x01, model 0x02"
std::string titleOf(const Table& table);

/// "Application 0x0000000A/0x0064"
std::string titleOfApplication(const Fields& application);

} // namespace inspect
