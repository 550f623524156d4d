#pragma once

#include "inputs/Interruption.h"
#include "packets/Input.h"

#include <optional>

namespace inspect {

/// A file or a pipe, or standard input under the name "-".
class FileInput : public Input {
public:
    /// @throws InputError when there is no such file, or it cannot be opened.
    FileInput(const std::string& path, const Interruption& interruption);
    ~FileInput() override;
    FileInput(const FileInput&) = delete;
    FileInput& operator=(const FileInput&) = delete;

    const std::string& name() const override { return m_name; }
    std::size_t read(std::uint8_t* target, std::size_t room) override;
    bool wait(std::chrono::milliseconds patience) override { return poll(static_cast<int>(patience.count())); }
    bool interrupted() const override { return m_interruption.happened(); }

private:
    bool poll(int patience) const;
    bool waitForBytes() const;

    std::string m_name;
    int m_descriptor;
    const Interruption& m_interruption;
};

/// The bytes of files, or of what standard input is, altogether. Nothing if they are not known: one may be a pipe, or
/// live. What does not exist has none.
std::optional<std::uint64_t> totalSize(const std::vector<std::string>& paths);

} // namespace inspect
