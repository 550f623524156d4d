#include "packets/Input.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace inspect {

FileInput::FileInput(const std::string& path)
    : m_name(path == "-" ? "standard input" : path),
      m_descriptor(path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
    if (m_descriptor < 0) {
        throw InputError(m_name, std::strerror(errno));
    }
}

FileInput::~FileInput() {
    if (m_descriptor != STDIN_FILENO) {
        close(m_descriptor);
    }
}

std::size_t FileInput::read(std::uint8_t* target, std::size_t room) {
    for (;;) {
        const ssize_t count = ::read(m_descriptor, target, room);
        if (count >= 0) {
            return static_cast<std::size_t>(count);
        }
        if (errno != EINTR) {
            throw InputError(m_name, std::strerror(errno));
        }
    }
}

} // namespace inspect
