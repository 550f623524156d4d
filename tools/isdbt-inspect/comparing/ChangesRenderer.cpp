#include "comparing/ChangesRenderer.h"

namespace inspect {

namespace {

/// Other content under the same version of the same table: receivers may overlook it.
bool keepsVersion(const SectionReport& former, const SectionReport& report) {
    return former.fingerprint != report.fingerprint && former.header && report.header && report.header->current &&
           former.header->extension == report.header->extension && former.header->version == report.header->version;
}

} // namespace

void ChangesRenderer::section(const SectionReport& report) {
    if (report.rejection) {
        tell({Fate::Rejected, report});
        m_known.keep(report);
    } else {
        take(report);
    }
}

void ChangesRenderer::take(const SectionReport& report) {
    const KnownSections::Known* const same = m_known.at(report);
    const KnownSections::Known* const former = m_known.formerOf(report);
    if (same != nullptr && same->report.fingerprint == report.fingerprint) {
        if (m_known.isOfThisInput(*same)) {
            tell({Fate::Returned, report});
        }
    } else if (former == nullptr) {
        tell({Fate::New, report});
    } else if (former->report.fingerprint != report.fingerprint || former->report.pid != report.pid) {
        SectionReport changed = report;
        changed.sameVersion = keepsVersion(former->report, report);
        tell({Fate::Changed, changed, &former->report, compare(former->report.fields, changed.fields)});
    }
    m_known.put(report);
    for (const unsigned number : m_known.forgetBeyond(report)) {
        tell({Fate::Ended, report, nullptr, {}, number});
    }
}

void ChangesRenderer::end(const Summary& summary, const Multiplex& /*multiplex*/, const Faults& faults) {
    for (const SectionReport* const report : m_known.missing()) {
        tell({Fate::Missing, *report});
    }
    tellOutcome(summary, faults);
}

} // namespace inspect
