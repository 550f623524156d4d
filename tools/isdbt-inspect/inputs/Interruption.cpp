#include "inputs/Interruption.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <system_error>
#include <unistd.h>

namespace inspect {

Interruption::Interruption() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        throw std::system_error(errno, std::generic_category(), "pipe");
    }
    m_readEnd = ends[0];
    m_writeEnd = ends[1];
}

Interruption::~Interruption() {
    close(m_readEnd);
    close(m_writeEnd);
}

void Interruption::interrupt() const {
    const char byte = 0;
    [[maybe_unused]] const ssize_t count = write(m_writeEnd, &byte, 1);
}

bool Interruption::happened() const {
    pollfd readable{m_readEnd, POLLIN, 0};
    return poll(&readable, 1, 0) > 0;
}

} // namespace inspect
