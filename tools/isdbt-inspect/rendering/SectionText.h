#pragma once

#include "rendering/Page.h"
#include "rendering/Report.h"

#include <string>

namespace inspect {

/// "PAT  PID 0x0000  version 3  section 0/0  current  packet 1204  12.040 s", and what is wrong with the section.
std::string sectionTitle(const SectionReport& report, const Style& style);

/// Appends why the library does not take a section: the error, the lines of its log, the descriptors with those at
/// fault marked, all bytes.
void appendRejection(Page& page, const Rejection& rejection, std::size_t indent);

} // namespace inspect
