#pragma once

#include "checking/Fault.h"
#include "multiplex/Multiplex.h"
#include "reports/Report.h"
#include "transmission/Transmission.h"

namespace inspect {

FaultPlace placeOf(const Table& table);

/// Where the first section of a table came.
std::optional<Position> sinceOf(const Table& table);

/// Only tables that are known whole can contradict others.
bool areWhole(const std::vector<const Table*>& tables);

/// What a table shows to be wrong with a part of the multiplex.
inline void addShown(Faults& faults, const Subject& subject, FaultKind kind, const Table& table, std::string text) {
    faults.add(subject, {kind, placeOf(table), std::move(text), sinceOf(table)});
}

/// A section of a table changed without a new version.
void addSilentChange(Faults& faults, const Subject& subject, const TableKey& table, const Position& position);

/// What is wrong with the sections of a table.
void checkSections(Faults& faults, const Subject& subject, const Table& table);

/// Compares what the tables say of a service, and of its components.
void checkService(Faults& faults, const Multiplex& multiplex, const TransportStream& stream, const Service& service);

/// What is wrong with a table that a component carries: an AIT, and why its applications may not start, or DSM-CC
/// stream descriptors.
/// @param components of the service that the table belongs to; null when its PMT is not known
void checkCarried(Faults& faults, const Table& table, const Components* components);

/// What was lost or damaged on the way, as the summary counts it.
void checkDamages(Faults& faults, const std::string& about, const Summary& summary);

/// What a modulator cannot send as it is, and where the NIT says that it is sent otherwise.
void checkTransmission(Faults& faults, const Transmission& transmission, const Multiplex& multiplex);

} // namespace inspect
