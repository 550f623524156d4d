#pragma once

#include <fstream>
#include <mutex>
#include <string>
#include <string_view>

namespace inspect {

/// A page that shows what was found in all inputs, and needs nothing but itself.
class PageFile {
public:
    /// @throws std::runtime_error when it cannot be written
    explicit PageFile(const std::string& path);

    /// @param lines in JSON, with what is known of an input. Threads may call it at the same time.
    void add(std::string_view lines);

    /// No input follows.
    /// @throws std::runtime_error when it could not be written
    void end();

private:
    std::string m_path;
    std::ofstream m_file;
    std::mutex m_mutex;
};

} // namespace inspect
