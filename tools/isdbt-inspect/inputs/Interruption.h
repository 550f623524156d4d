#pragma once

namespace inspect {

/// Turns the first Ctrl-C (SIGINT), and the first SIGTERM, into the end of the input. The second one ends the program.
/// There is one object of it at a time.
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    bool happened() const;

    /// A file descriptor that can be read from then on. Whoever waits for input waits for it, too, and so misses no
    /// signal, whenever it comes.
    int descriptor() const { return m_readEnd; }

private:
    int m_readEnd;
};

} // namespace inspect
