#pragma once

#include <string>

namespace inspect {

/// "[ADDRESS:]PORT" with an address: that of the loopback when there is none.
std::string listeningAddress(const std::string& text);

/// Why nobody can listen there; empty when somebody can.
std::string objectionToListeningOn(const std::string& text);

} // namespace inspect
