#pragma once

#include "inputs/Timetable.h"
#include "packets/Input.h"

#include <functional>
#include <memory>

namespace inspect {

/// A live input, of which somebody wants to know when nothing comes.
class WatchedInput : public Input {
public:
    /// @param limit in seconds, from which on a silence is too long
    /// @param onSilence is told of each one when it has become too long, and when it ends
    WatchedInput(std::unique_ptr<Input> input, double limit, std::function<void(const Silence&)> onSilence)
        : m_input(std::move(input)), m_watch(limit), m_onSilence(std::move(onSilence)) {}

    const std::string& name() const override { return m_input->name(); }
    bool interrupted() const override { return m_input->interrupted(); }
    bool isLive() const override { return m_input->isLive(); }
    std::size_t read(std::uint8_t* target, std::size_t room) override { return m_input->read(target, room); }

    bool wait(std::chrono::milliseconds patience) override {
        const bool isThere = m_input->wait(patience);
        if (const std::optional<Silence> silence = m_watch.look(m_stopwatch.seconds(), isThere);
            silence && !m_input->interrupted()) {
            m_count += silence->isOver ? 0U : 1U;
            m_onSilence(*silence);
        }
        return isThere;
    }

    std::vector<Loss> losses() const override {
        std::vector<Loss> losses = m_input->losses();
        if (m_count != 0) {
            losses.push_back({"time without data", "times without data", m_count, Loss::Kind::Silence});
        }
        return losses;
    }

private:
    std::unique_ptr<Input> m_input;
    SilenceWatch m_watch;
    Stopwatch m_stopwatch;
    std::function<void(const Silence&)> m_onSilence;
    std::uint64_t m_count = 0;
};

} // namespace inspect
