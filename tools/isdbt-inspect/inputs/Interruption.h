#pragma once

namespace inspect {

/// Turns Ctrl-C (SIGINT), SIGTERM and SIGHUP into the end of the input. Another signal within a second is taken for the
/// same wish: who ends a process and its group signals twice. A later one ends the program.
/// There is one object of it at a time.
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /// Does what a signal does, without one.
    void interrupt() const;

    bool happened() const;

    /// Whether a signal did it.
    static bool wasSignalled();

    /// A file descriptor that can be read from then on. Whoever waits for input waits for it, too, and so misses no
    /// signal, whenever it comes.
    int descriptor() const { return m_readEnd; }

private:
    int m_readEnd;
    int m_writeEnd;
};

} // namespace inspect
