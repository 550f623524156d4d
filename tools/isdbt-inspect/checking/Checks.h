#pragma once

#include "checking/Fault.h"
#include "multiplex/Multiplex.h"
#include "reports/Report.h"
#include "transmission/Transmission.h"

namespace inspect {

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
/// @param applications of all AITs
void checkService(Faults& faults, const Multiplex& multiplex, const TransportStream& stream, const Service& service,
                  const std::vector<ApplicationReport>& applications);

/// What is wrong with a table that a component carries: an AIT, and why its applications may not start, or DSM-CC
/// stream descriptors.
/// @param applications of all AITs
void checkCarried(Faults& faults, const Table& table, const std::vector<ApplicationReport>& applications);

/// What was lost or damaged on the way, as the summary counts it.
void checkDamages(Faults& faults, const std::string& about, const Summary& summary);

/// What a modulator cannot send as it is, and where the NIT says that it is sent otherwise.
void checkTransmission(Faults& faults, const Transmission& transmission, const Multiplex& multiplex);

} // namespace inspect
