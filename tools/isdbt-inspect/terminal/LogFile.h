#pragma once

#include <string>

namespace inspect {

/// A file that output is appended to. SIGUSR1 opens it anew under its name: who rotates logs has moved it away.
/// There is one object of it at a time.
class LogFile {
public:
    /// @throws std::runtime_error when it cannot be opened
    explicit LogFile(const std::string& path);
    ~LogFile();
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;

    /// Always the same one.
    int descriptor() const { return m_descriptor; }

private:
    int m_descriptor;
};

} // namespace inspect
