#pragma once

#include "packets/Input.h"

#include <memory>

namespace inspect {

/// Another input as it is. What somebody wants otherwise of it is what a class of its own overrides.
class ForwardedInput : public Input {
public:
    explicit ForwardedInput(std::unique_ptr<Input> input) : m_owned(std::move(input)), m_input(*m_owned) {}
    explicit ForwardedInput(Input& input) : m_input(input) {}

    const std::string& name() const override { return m_input.name(); }
    std::size_t read(std::uint8_t* target, std::size_t room) override { return m_input.read(target, room); }
    bool wait(std::chrono::milliseconds patience) override { return m_input.wait(patience); }
    bool interrupted() const override { return m_input.interrupted(); }
    bool isLive() const override { return m_input.isLive(); }
    std::optional<Arrival> arrival() const override { return m_input.arrival(); }
    std::vector<Loss> losses() const override { return m_input.losses(); }

private:
    std::unique_ptr<Input> m_owned; ///< null when it is somebody else's
    Input& m_input;
};

} // namespace inspect
