#pragma once

#include "inputs/ForwardedInput.h"
#include "inputs/Timetable.h"

#include <functional>

namespace inspect {

/// A live input, of which somebody wants to know when nothing comes.
class WatchedInput : public ForwardedInput {
public:
    /// @param limit in seconds, from which on a silence is too long
    /// @param onSilence is told of each one when it has become too long, and when it ends
    WatchedInput(std::unique_ptr<Input> input, double limit, std::function<void(const Silence&)> onSilence)
        : ForwardedInput(std::move(input)), m_watch(limit), m_onSilence(std::move(onSilence)) {}

    bool wait(std::chrono::milliseconds patience) override {
        const bool isThere = ForwardedInput::wait(patience);
        if (const std::optional<Silence> silence = m_watch.look(m_stopwatch.seconds(), isThere);
            silence && !interrupted()) {
            m_count += silence->isOver ? 0U : 1U;
            m_onSilence(*silence);
        }
        return isThere;
    }

    std::vector<Loss> losses() const override {
        std::vector<Loss> losses = ForwardedInput::losses();
        if (m_count != 0) {
            losses.push_back({"time without data", "times without data", m_count, Loss::Kind::Silence});
        }
        return losses;
    }

private:
    SilenceWatch m_watch;
    Stopwatch m_stopwatch;
    std::function<void(const Silence&)> m_onSilence;
    std::uint64_t m_count = 0;
};

} // namespace inspect
