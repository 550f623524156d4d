#pragma once

#include <string>
#include <vector>

/// Holds every line that the library logs in this thread from construction on. Captures nest; the innermost one gets
/// the lines. Lines that nobody captures are dropped.
class LogCapture {
public:
    struct Line {
        int level;
        std::string tag;
        std::string text;
    };

    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// The lines as they were written, without their newlines.
    std::vector<std::string> lines() const;

    /// The lines with level and tag as they were given to the logger.
    const std::vector<Line>& records() const { return m_records; }

    void record(Line line) { m_records.push_back(std::move(line)); }

private:
    LogCapture* m_outer;
    std::vector<Line> m_records;
};
