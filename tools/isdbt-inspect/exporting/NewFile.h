#pragma once

#include <string>
#include <string_view>

namespace inspect {

/// A file that was not there before.
class NewFile {
public:
    /// @throws std::runtime_error when it cannot be made, for one when it is there.
    explicit NewFile(std::string path);
    ~NewFile();
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    /// @throws std::runtime_error
    void write(std::string_view bytes) const;

private:
    [[noreturn]] void fail() const;

    std::string m_path;
    int m_descriptor;
};

} // namespace inspect
