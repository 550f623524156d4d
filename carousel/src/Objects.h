#pragma once

#include "dsmcc/Limits.h"
#include "dsmcc/Objects.h"

namespace dsmcc {

/// How many objects there are, and descriptors, bindings, taps and events in them.
std::size_t countOf(const std::vector<Object>& objects);

/// The objects of a module, as many as hold together.
/// @param room what countOf() may come to
std::vector<Object> readObjects(ByteView module, std::size_t room, const Limits& limits,
                                std::vector<Refusal>& refusals);

/// The kind that an alias or a full type id names.
ObjectKind kindOf(const std::string& name);

/// Whether a name, or each of those with "/" between, could neither lead out of a folder nor disturb a terminal.
bool safeName(const std::string& name, const Limits& limits);
bool safePath(const std::string& path, const Limits& limits);

} // namespace dsmcc
