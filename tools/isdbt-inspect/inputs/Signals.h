#pragma once

#include "inputs/Interruption.h"

namespace inspect {

/// Turns Ctrl-C (SIGINT), SIGTERM and SIGHUP into an interruption. Another signal within a second is taken for the same
/// wish: who ends a process and its group signals twice. A later one ends the program.
/// There is one object of it at a time.
class Signals {
public:
    /// @param interruption outlives the object
    explicit Signals(const Interruption& interruption);
    ~Signals();
    Signals(const Signals&) = delete;
    Signals& operator=(const Signals&) = delete;

    static bool came();
};

} // namespace inspect
