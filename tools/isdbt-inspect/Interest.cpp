#include "Interest.h"

namespace inspect {

namespace {

/// Whether a part of the header is one of those wished for.
template <class Part>
bool isOneOf(const std::set<Part>& wished, const std::optional<LongHeader>& header, Part LongHeader::*part) {
    return wished.empty() || (header && wished.count((*header).*part) != 0);
}

} // namespace

bool Interest::isChoosy() const {
    return !extensions.empty() || !versions.empty() || rejected || damaged || isTimed();
}

bool Interest::chooses(const SectionReport& report) const {
    const bool hasEnded = until && report.position.seconds.value_or(0) > *until;
    const bool isWrong = report.rejection || (damaged && report.damaged);
    return isOneOf(extensions, report.header, &LongHeader::extension) &&
           isOneOf(versions, report.header, &LongHeader::version) && (!rejected || isWrong) &&
           hasBegun(report.position) && !hasEnded;
}

} // namespace inspect
