#pragma once

#include "packets/Input.h"

#include <optional>

namespace inspect {

/// Another input, as far as it can be read: it ends there, as if the user had interrupted it.
class ReadablePart : public Input {
public:
    explicit ReadablePart(Input& input) : m_input(input) {}

    const std::string& name() const override { return m_input.name(); }
    bool interrupted() const override { return m_failure || m_input.interrupted(); }
    bool isLive() const override { return m_input.isLive(); }
    std::optional<Arrival> arrival() const override { return m_input.arrival(); }
    std::vector<Loss> losses() const override { return m_input.losses(); }

    bool wait(std::chrono::milliseconds patience) override { return m_failure || m_input.wait(patience); }

    std::size_t read(std::uint8_t* target, std::size_t room) override {
        if (m_failure) {
            return 0;
        }
        try {
            return m_input.read(target, room);
        } catch (const InputError& error) {
            m_failure = error;
            return 0;
        }
    }

    /// @throws InputError when it could not be read to its end
    void complain() const {
        if (m_failure) {
            throw InputError(*m_failure);
        }
    }

private:
    Input& m_input;
    std::optional<InputError> m_failure;
};

} // namespace inspect
