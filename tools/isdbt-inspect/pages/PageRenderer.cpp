#include "pages/PageRenderer.h"

#include "arranging/Arrangement.h"
#include "history/History.h"
#include "json/AlarmJson.h"
#include "json/AllJsonRenderer.h"
#include "json/HistoryJson.h"
#include "json/OutlineJson.h"
#include "json/SectionJson.h"

namespace inspect {

namespace {

std::optional<double> stepOf(const Summary& summary) {
    return summary.history == nullptr ? std::nullopt : std::optional(summary.history->stepLength());
}

} // namespace

void PageRenderer::begin(const std::string& name) {
    m_source = name;
    m_sections = KeptSections(m_server != nullptr ? LIVE_ROOM : ROOM);
    m_finder = FieldFinder();
    m_alarms.clear();
    m_view->begin(name);
}

void PageRenderer::section(const SectionReport& report) {
    const FieldPlaces places = placesIn(report);
    m_sections.take(placeOf(report), sectionLine(m_source, report, &places));
    if (m_withBytes || report.bytes.empty()) {
        m_view->section(report);
        return;
    }
    SectionReport withoutBytes = report;
    withoutBytes.bytes.clear();
    m_view->section(withoutBytes);
}

/// As many bytes are tried as take little beside the reading of the stream so far.
FieldPlaces PageRenderer::placesIn(const SectionReport& report) {
    constexpr std::uint64_t AT_ONCE = 1000000;
    constexpr std::uint64_t PACKETS_OF_A_BYTE = 20;
    const std::uint64_t most = AT_ONCE + report.position.packet / PACKETS_OF_A_BYTE;
    return report.rejection ? FieldPlaces() : m_finder.find(placeOf(report), report.bytes, report.fields, most);
}

void PageRenderer::alarm(const Alarm& alarm) {
    if (m_alarms.size() == MOST_ALARMS) {
        m_alarms.pop_front();
    }
    m_alarms.push_back(alarmLine(m_source, alarm));
    m_view->alarm(alarm);
}

void PageRenderer::updateAll(const Summary& summary, const Multiplex& multiplex, const Faults& faults) {
    m_server->update(m_source, linesOf(summary, multiplex, faults));
}

void PageRenderer::end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) {
    const std::string lines = linesOf(summary, multiplex, faults);
    if (m_file != nullptr) {
        m_file->add(lines);
    }
    if (m_server != nullptr) {
        m_server->update(m_source, lines);
    }
    m_view->end(summary, multiplex, faults);
}

std::string PageRenderer::linesOf(const Summary& summary, const Multiplex& multiplex, const Faults& faults) const {
    std::string lines = m_sections.text();
    if (summary.history != nullptr) {
        lines += historyLines(m_source, *summary.history, m_sections.leftOut());
    }
    for (const std::string& alarm : m_alarms) {
        lines += alarm;
    }
    return lines + outlineLine(m_source, arrange(multiplex, faults)) +
           allLines(m_source, summary, faults, stepOf(summary));
}

} // namespace inspect
