#pragma once

#include <string>
#include <vector>

namespace inspect {

/// Collects what the library logs in this thread while the object lives. Without one, its lines are dropped.
class LogLines {
public:
    LogLines();
    ~LogLines();
    LogLines(const LogLines&) = delete;
    LogLines& operator=(const LogLines&) = delete;

    void add(std::string line) { m_lines.push_back(std::move(line)); }
    std::vector<std::string> take() { return std::move(m_lines); }

private:
    LogLines* m_outer;
    std::vector<std::string> m_lines;
};

} // namespace inspect
