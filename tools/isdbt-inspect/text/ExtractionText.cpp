#include "text/ExtractionText.h"

#include "describing/Conversion.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

Line textOf(const NotAsAnnounced& other) {
    const std::string name = other.path.empty() ? "" : shownName(other.path) + ": ";
    const std::string as = shownName(other.writtenAs);
    switch (other.kind) {
    case NotAsAnnounced::Kind::Renamed:
        return {fmt::format("  {}written as {} ({})", name, as, other.text), Ink::Remark};
    case NotAsAnnounced::Kind::Partial:
        return {fmt::format("  ! {}written as {}: {}", name, as, other.text), Ink::Fault};
    case NotAsAnnounced::Kind::NoFile:
        return {fmt::format("  {}no file, but {}", name, other.text), Ink::Remark};
    case NotAsAnnounced::Kind::Incomplete:
    case NotAsAnnounced::Kind::Refused:
        break;
    }
    return {fmt::format("  ! {}not written: {}", name, other.text), Ink::Fault};
}

} // namespace

std::vector<Line> extractionText(const Extraction& extraction) {
    constexpr std::size_t MANY = 50;
    std::vector<Line> lines{Line(fmt::format("extracted {}: {} {} of {} bytes", extraction.folder, extraction.files,
                                             extraction.files == 1 ? "file" : "files", extraction.bytes)) +
                            Line(fmt::format(", {} partial, {} incomplete, {} refused", extraction.partial,
                                             extraction.incomplete, extraction.refused),
                                 extraction.whole() ? Ink::Plain : Ink::Fault)};
    for (std::size_t at = 0; at < std::min(extraction.others.size(), MANY); ++at) {
        lines.push_back(textOf(extraction.others[at]));
    }
    if (extraction.others.size() > MANY) {
        lines.emplace_back(fmt::format("  and {} more", extraction.others.size() - MANY));
    }
    return lines;
}

} // namespace inspect
