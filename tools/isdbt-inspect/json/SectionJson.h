#pragma once

#include "checking/Fault.h"
#include "placing/FieldPlaces.h"
#include "reports/Report.h"

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace inspect {

/// What is said of a section but for its content: what its header says, and where in the input it was found.
nlohmann::ordered_json sectionJson(const char* type, const std::string& source, const SectionReport& report);

/// Adds where in the stream something is.
void addPlace(nlohmann::ordered_json& object, const FaultPlace& place);

const char* severityName(Severity severity);

/// A descriptor as its tag and its length state it, and whether it is one that the library does not take.
nlohmann::ordered_json descriptorJson(const DescriptorOnWire& descriptor);

/// Adds the error with which the library does not take something, and the lines of its log.
void addError(nlohmann::ordered_json& object, const Rejection& rejection);

/// Adds why the library does not take a section: the error, the descriptors with those at fault marked, all bytes.
void addRejection(nlohmann::ordered_json& object, const Rejection& rejection);

/// A line for a section, with its descriptors as they are on the wire where its bytes are asked for.
/// @param places of its fields, none when they were not tried; null when nobody asks for them
std::string sectionLine(const std::string& source, const SectionReport& report, const FieldPlaces* places = nullptr);

/// A line for each fault of a source.
std::string faultLines(const std::string& source, const Faults& faults);

} // namespace inspect
