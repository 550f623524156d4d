#pragma once

namespace inspect {

/// What ends the inputs before their end. Any thread may do it, and a signal handler.
class Interruption {
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    void interrupt() const;

    bool happened() const;

    /// A file descriptor that can be read from then on. Whoever waits for input waits for it, too, and so misses no
    /// interruption, whenever it comes.
    int descriptor() const { return m_readEnd; }

private:
    int m_readEnd;
    int m_writeEnd;
};

} // namespace inspect
