#pragma once

#include "terminal/Sink.h"

#include <cstdio>

namespace inspect {

/// Output that has to wait until it is its turn, in a file that nobody else sees.
class Spool {
public:
    /// @throws std::runtime_error when there is no place for it
    Spool();

    /// What is to be kept goes there.
    const std::shared_ptr<Sink>& sink() const { return m_sink; }

    /// Writes all that was kept.
    /// @throws OutputClosed, or std::runtime_error
    void writeTo(Sink& sink) const;

private:
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> m_file;
    std::shared_ptr<Sink> m_sink;
};

} // namespace inspect
