#pragma once

#include "starting/Outcome.h"

namespace inspect {

/// Where in the stream something stands.
struct Evidence {
    FaultPlace place = {};
    std::optional<Position> position = {};
    std::vector<std::uint8_t> bytes = {};
};

/// Whether nothing starts without it.
enum class Need { Start, Use };

/// The steps of an application, as it goes them.
class Steps {
public:
    void add(std::string_view name, Outcome outcome, Evidence evidence, Need need = Need::Start);

    /// Whether there may be another one of a name: no application has so many, and a broken stream must not fill the
    /// memory. Says so at the first that there may not.
    bool hasRoomFor(std::string_view name);

    /// Adds a step that is needed. Once one of those has not passed, those behind it are not tried.
    /// @param outcome Outcome(), called when it is tried
    template <class Try> void go(std::string_view name, const Evidence& evidence, Try outcome) {
        if (!m_broken.empty()) {
            add(name, dependent(name), {});
            return;
        }
        add(name, outcome(), evidence);
        if (m_steps.back().result != Step::Result::Passed) {
            m_broken = name;
        }
    }

    /// Whether all that go() was told of passed so far.
    bool goesOn() const { return m_broken.empty(); }

    /// When all was there that the steps needed so far, in seconds.
    double completed() const { return m_completed; }

    /// The first of a result and a need; null when there is none.
    const Step* first(Step::Result result, Need need) const;

    const std::vector<Step>& all() const { return m_steps; }

    std::vector<Step> take() { return std::move(m_steps); }

private:
    Outcome dependent(std::string_view name) const;

    std::vector<Step> m_steps;
    std::string_view m_broken; ///< the step on which what follows would depend
    double m_completed = 0;
};

} // namespace inspect
