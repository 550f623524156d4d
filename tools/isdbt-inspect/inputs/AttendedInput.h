#pragma once

#include "packets/Input.h"

#include <chrono>
#include <functional>

namespace inspect {

/// Another input, which somebody attends to: before each read, and from time to time while nothing comes.
class AttendedInput : public Input {
public:
    /// @param attend says whether the input goes on
    AttendedInput(Input& input, std::function<bool()> attend) : m_input(input), m_attend(std::move(attend)) {}

    const std::string& name() const override { return m_input.name(); }
    bool interrupted() const override { return m_hasEnded || m_input.interrupted(); }
    bool isLive() const override { return m_input.isLive(); }
    std::optional<Arrival> arrival() const override { return m_input.arrival(); }
    std::vector<Loss> losses() const override { return m_input.losses(); }

    std::size_t read(std::uint8_t* target, std::size_t room) override {
        constexpr std::chrono::milliseconds INTERVAL{100};
        for (bool isThere = false; !isThere && !m_hasEnded;) {
            isThere = m_input.wait(INTERVAL);
            m_hasEnded = !m_attend();
        }
        return m_hasEnded ? 0 : m_input.read(target, room);
    }

private:
    Input& m_input;
    std::function<bool()> m_attend;
    bool m_hasEnded = false;
};

} // namespace inspect
