#pragma once

#include "packets/Input.h"

#include <functional>
#include <memory>

namespace inspect {

/// Another input, of which somebody wants to know how far it is read.
class MeasuredInput : public Input {
public:
    /// @param onRead is told of each number of bytes
    MeasuredInput(std::unique_ptr<Input> input, std::function<void(std::size_t)> onRead)
        : m_input(std::move(input)), m_onRead(std::move(onRead)) {}

    const std::string& name() const override { return m_input->name(); }
    bool interrupted() const override { return m_input->interrupted(); }
    bool isLive() const override { return m_input->isLive(); }
    std::optional<Arrival> arrival() const override { return m_input->arrival(); }
    std::vector<Loss> losses() const override { return m_input->losses(); }

    bool wait(std::chrono::milliseconds patience) override {
        const bool isThere = m_input->wait(patience);
        m_onRead(0); // time passes, too
        return isThere;
    }

    std::size_t read(std::uint8_t* target, std::size_t room) override {
        const std::size_t count = m_input->read(target, room);
        m_onRead(count);
        return count;
    }

private:
    std::unique_ptr<Input> m_input;
    std::function<void(std::size_t)> m_onRead;
};

} // namespace inspect
