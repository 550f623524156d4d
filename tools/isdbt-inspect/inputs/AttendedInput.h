#pragma once

#include "inputs/ForwardedInput.h"

#include <functional>

namespace inspect {

/// Another input, which somebody attends to: before each read, and from time to time while nothing comes.
class AttendedInput : public ForwardedInput {
public:
    /// @param attend says whether the input goes on
    AttendedInput(Input& input, std::function<bool()> attend) : ForwardedInput(input), m_attend(std::move(attend)) {}

    bool interrupted() const override { return m_hasEnded || ForwardedInput::interrupted(); }

    std::size_t read(std::uint8_t* target, std::size_t room) override {
        constexpr std::chrono::milliseconds INTERVAL{100};
        for (bool isThere = false; !isThere && !m_hasEnded;) {
            isThere = ForwardedInput::wait(INTERVAL);
            m_hasEnded = !m_attend();
        }
        return m_hasEnded ? 0 : ForwardedInput::read(target, room);
    }

private:
    std::function<bool()> m_attend;
    bool m_hasEnded = false;
};

} // namespace inspect
