#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace inspect {

/// An input that cannot be read, or that is no transport stream. The text is for the user and names the input.
class InputError : public std::runtime_error {
public:
    InputError(const std::string& input, const std::string& reason) : std::runtime_error(input + ": " + reason) {}
};

/// Where bytes come from.
class Input {
public:
    Input() = default;
    virtual ~Input() = default;
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;

    /// What the user calls it.
    virtual const std::string& name() const = 0;

    /// Reads at most @p room bytes, as soon as there are any. @return their number; 0 at the end.
    /// @throws InputError
    virtual std::size_t read(std::uint8_t* target, std::size_t room) = 0;
};

/// A file, or standard input under the name "-".
class FileInput : public Input {
public:
    /// @throws InputError when there is no such file, or it cannot be opened.
    explicit FileInput(const std::string& path);
    ~FileInput() override;
    FileInput(const FileInput&) = delete;
    FileInput& operator=(const FileInput&) = delete;

    const std::string& name() const override { return m_name; }
    std::size_t read(std::uint8_t* target, std::size_t room) override;

private:
    std::string m_name;
    int m_descriptor;
};

} // namespace inspect
