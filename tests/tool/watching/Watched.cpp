#include "tool/watching/Watched.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fmt/format.h>

using inspect::Alarm;

Watched& Watched::until(double seconds, const std::function<void(double)>& carry) {
    for (; m_tenths <= std::lround(seconds * 10); ++m_tenths, ++m_packet) {
        if (carry) {
            carry(m_tenths / 10.0);
        }
        m_watch.tick(position());
        listen();
    }
    return *this;
}

void Watched::section(inspect::Pid pid, const ByteVector& bytes) {
    auto* const memory = static_cast<std::uint8_t*>(std::malloc(bytes.size()));
    std::memcpy(memory, bytes.data(), bytes.size());
    const inspect::Section section(pid, inspect::Section::Memory(memory), position());
    m_watch.take(section);
    if (section.sound()) {
        m_watch.learn(section);
    }
}

void Watched::packet(inspect::Pid pid) {
    ByteVector packet = fill(188, 0xFF);
    packet[0] = 0x47;
    packet[1] = static_cast<QUOR_U8>(pid >> 8U);
    packet[2] = static_cast<QUOR_U8>(pid);
    packet[3] = 0x10;
    m_traffic.take(packet.data(), position());
    m_events.clear();
}

void Watched::happens(inspect::EventKind kind, std::optional<inspect::Pid> pid, double amount, double from, double to) {
    m_watch.take(inspect::Events{{kind, pid, position(), amount, from, to, m_packet - 1}}, position());
}

void Watched::breaks(inspect::Pid pid, unsigned lost, std::uint64_t ago) {
    m_watch.take(inspect::Events{{inspect::EventKind::Discontinuity, pid, position(), static_cast<double>(lost), 0, 0,
                                  m_packet - ago}},
                 position());
}

Watched& Watched::silentUntil(double seconds) {
    const double begin = m_tenths / 10.0;
    for (; m_tenths <= std::lround(seconds * 10); ++m_tenths) {
        m_watch.tickInSilence(position(), m_tenths / 10.0 - begin);
        listen();
    }
    return *this;
}

void Watched::listen() {
    for (const Alarm& alarm : m_watch.news()) {
        m_said.push_back(alarm);
    }
}

void Watched::lose(double seconds) {
    const inspect::Position now = position();
    inspect::Position after = now;
    after.seconds = *now.seconds + seconds - 0.5;
    m_watch.take(inspect::Events{{inspect::EventKind::PcrInterval, 0x0100, after, seconds},
                                 {inspect::EventKind::Loss, {}, after, seconds}},
                 now);
    m_tenths += static_cast<int>(std::lround(seconds * 10));
}

std::vector<std::string> Watched::said(const std::string& check) const {
    std::vector<std::string> lines;
    for (const Alarm& alarm : m_said) {
        if (alarm.kind.name == check) {
            const char* const stage = alarm.stage == Alarm::Stage::Begun   ? "begin"
                                      : alarm.stage == Alarm::Stage::Worse ? "worse"
                                                                           : "end";
            const char* const severity = alarm.kind.severity == inspect::Severity::Error     ? "alarm"
                                         : alarm.kind.severity == inspect::Severity::Warning ? "warning"
                                                                                             : "remark";
            lines.push_back(fmt::format("{:.1f} {} {}: {}", alarm.at.seconds.value_or(0), stage, severity, alarm.text));
        }
    }
    return lines;
}

std::vector<std::string> Watched::checks() const {
    std::vector<std::string> names;
    for (const Alarm& alarm : m_said) {
        if (std::find(names.begin(), names.end(), alarm.kind.name) == names.end()) {
            names.emplace_back(alarm.kind.name);
        }
    }
    return names;
}

std::string Watched::result(const std::string& check) const {
    for (const inspect::CheckResult& result : m_watch.results()) {
        if (result.check == check) {
            const std::uint64_t alarms = result.alarms + result.warnings + result.remarks;
            return alarms != 0                    ? fmt::format("{} alarms", alarms)
                   : result.whyUnmeasured.empty() ? "ok"
                                                  : result.whyUnmeasured;
        }
    }
    return "not in the profile";
}

bool each(int tenths, double seconds) {
    return std::lround(seconds * 10) % tenths == 0;
}

namespace {

LongHeader header(QUOR_U16 extension, unsigned version) {
    LongHeader header;
    header.extension = extension;
    header.version = version;
    return header;
}

} // namespace

ByteVector pmt(QUOR_U16 program, const std::string& clock, const std::string& streams, unsigned version) {
    return longSection(0x02, header(program, version), hex(clock + " F000 " + streams));
}

ByteVector pat(const std::string& programs, unsigned version) {
    return longSection(0x00, header(0x0735, version), hex(programs));
}

ByteVector tot(unsigned second) {
    return shortSection(0x73, hex(fmt::format("EB5F 12{:02}{:02} F000", second / 60, second % 60)));
}
