#pragma once

#include "checking/Fault.h"
#include "reports/Alarm.h"
#include "reports/Report.h"

namespace inspect {

/// A form of output.
class Renderer {
public:
    Renderer() = default;
    virtual ~Renderer() = default;
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    /// An input begins.
    /// @param name as the user calls it
    virtual void begin(const std::string& /*name*/) {}

    /// A section says something new.
    virtual void section(const SectionReport& report) = 0;

    /// A descriptor that came by itself. No view of a multiplex has a place for it.
    virtual void descriptor(const DescriptorReport& /*report*/) {}

    /// An alarm began, or ended.
    virtual void alarm(const Alarm& /*alarm*/) {}

    /// What came so far, when the user wants to know it from time to time.
    /// @param seconds since the input began
    virtual void interim(const Summary& /*summary*/, double /*seconds*/) {}

    /// What came so far, about each second, for who wantsUpdates().
    virtual void update(const Summary& /*summary*/) {}
    virtual bool wantsUpdates() const { return false; }

    /// The same with all that is known, at the same times, for who wantsAll().
    virtual void updateAll(const Summary& /*summary*/, const Multiplex& /*multiplex*/, const Faults& /*faults*/) {}
    virtual bool wantsAll() const { return false; }

    /// Whether it wants to know what came when, and the bytes of all sections.
    virtual bool wantsHistory() const { return false; }

    /// Whether it is told things only that it may know what follows, and writes nothing.
    virtual void setSilent(bool /*isSilent*/) {}

    /// The range of the input ended that was asked for: behind end() where it ends with the input.
    virtual void endRange(const Summary& /*summary*/) {}

    /// The input ended, or was interrupted.
    /// @param multiplex what its sections say all together
    /// @param faults what does not fit together in it
    virtual void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) = 0;
};

} // namespace inspect
