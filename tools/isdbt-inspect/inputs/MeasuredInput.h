#pragma once

#include "inputs/ForwardedInput.h"

#include <functional>

namespace inspect {

/// Another input, of which somebody wants to know how far it is read.
class MeasuredInput : public ForwardedInput {
public:
    /// @param onRead is told of each number of bytes
    MeasuredInput(std::unique_ptr<Input> input, std::function<void(std::size_t)> onRead)
        : ForwardedInput(std::move(input)), m_onRead(std::move(onRead)) {}

    bool wait(std::chrono::milliseconds patience) override {
        const bool isThere = ForwardedInput::wait(patience);
        m_onRead(0); // time passes, too
        return isThere;
    }

    std::size_t read(std::uint8_t* target, std::size_t room) override {
        const std::size_t count = ForwardedInput::read(target, room);
        m_onRead(count);
        return count;
    }

private:
    std::function<void(std::size_t)> m_onRead;
};

} // namespace inspect
