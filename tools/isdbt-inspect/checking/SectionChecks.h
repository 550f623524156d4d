#pragma once

#include "checking/Fault.h"

namespace inspect {

FaultPlace placeOf(const Table& table);

/// Where the first section of a table came.
std::optional<Position> sinceOf(const Table& table);

/// Only tables that are known whole can contradict others.
bool areWhole(const std::vector<const Table*>& tables);

/// A section of a table changed without a new version.
void addSilentChange(Faults& faults, const Subject& subject, const TableKey& table, const Position& position);

/// What is wrong with the sections of a table.
void checkSections(Faults& faults, const Subject& subject, const Table& table);

} // namespace inspect
