#pragma once

#include "arranging/Outline.h"
#include "reports/Report.h"
#include "text/Page.h"

namespace inspect {

/// "  packet 3  0.250 s"
std::string positionText(const Position& position);

/// "2025-06-15 21:30:20 UTC"
std::string utcText(std::int64_t unixTime);

/// "PAT  PID 0x0000  version 3  section 0/0  current  packet 1204  12.040 s", and what is wrong with the section.
Line sectionTitle(const SectionReport& report);

/// "PMT 0xE6A0  PID 0x0101  version 3 -> 4  section 0/0", with the table_id_extension behind the table's name; "not yet
/// current" when it is not.
/// @param formerVersion what stands before the arrow when it is another one
Line sectionName(const SectionReport& report, std::optional<std::uint8_t> formerVersion = std::nullopt);

/// The same with the place in the stream, and what is wrong with the section.
Line changeTitle(const SectionReport& report, std::optional<std::uint8_t> formerVersion = std::nullopt);

/// "stream_identifier_descriptor (0x52)  PMT  byte 3  REJECTED"
Line descriptorTitle(const DescriptorReport& report);

/// Appends one descriptor: where it stands, its tag, name, length and, unless in brief, bytes. What the library
/// refuses, or what does not fit, is marked.
void appendDescriptorLine(Page& page, const DescriptorOnWire& descriptor, std::size_t indent,
                          Extent extent = Extent::Full);

/// Appends all bytes of a section.
void appendSectionBytes(Page& page, const std::vector<std::uint8_t>& bytes, std::size_t indent);

/// Appends why the library does not take a section: the error, the lines of its log, the descriptors with those at
/// fault marked, all bytes.
/// @param extent in an overview, of the descriptors the first one at fault alone, which is the one that the library
///               stopped at, and no other bytes; in brief, no bytes and no log
void appendRejection(Page& page, const Rejection& rejection, std::size_t indent, Extent extent = Extent::Full);

} // namespace inspect
