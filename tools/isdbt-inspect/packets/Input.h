#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace inspect {

/// An input that cannot be read, or that is no transport stream. The text is for the user and names the input.
class InputError : public std::runtime_error {
public:
    InputError(const std::string& input, const std::string& reason) : std::runtime_error(input + ": " + reason) {}
};

/// What did not come through.
struct Loss {
    const char* singular;
    const char* plural;
    std::uint64_t count;

    enum class Kind {
        Datagrams,
        Silence ///< nothing came for long
    } kind = Kind::Datagrams;
};

/// When bytes were received.
struct Arrival {
    double seconds;            ///< by a clock that does not jump
    std::int64_t milliseconds; ///< since 1970-01-01T00:00:00Z
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

    /// Waits until read() need not, but no longer than that. @return whether it need not; a file never need.
    virtual bool wait(std::chrono::milliseconds /*patience*/) { return true; }

    /// Whether the user ended it: what is incomplete then is nobody's fault.
    virtual bool interrupted() const { return false; }

    /// Whether it is read while it is sent, so that its time can be compared with that of this machine.
    virtual bool isLive() const { return false; }

    /// When those bytes were received that were read last, as far as it is known.
    virtual std::optional<Arrival> arrival() const { return std::nullopt; }

    /// What was lost before it could be read.
    virtual std::vector<Loss> losses() const { return {}; }
};

} // namespace inspect
