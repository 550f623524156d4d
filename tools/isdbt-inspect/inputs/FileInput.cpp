#include "inputs/FileInput.h"

#include "inputs/StreamAddress.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace inspect {

// A named pipe is not waited for until it is read, where an interruption is waited for, too.
FileInput::FileInput(const std::string& path, const Interruption& interruption)
    : m_name(path == "-" ? "standard input" : path),
      m_descriptor(path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)),
      m_interruption(interruption) {
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
    while (waitForBytes()) {
        const ssize_t count = ::read(m_descriptor, target, room);
        if (count >= 0) {
            return static_cast<std::size_t>(count);
        }
        if (errno != EINTR && errno != EAGAIN) {
            throw InputError(m_name, std::strerror(errno));
        }
    }
    return 0;
}

/// @param patience in milliseconds; for ever when it is negative
/// @return whether there are bytes, or an interruption
bool FileInput::poll(int patience) const {
    std::array<pollfd, 2> either{{{m_descriptor, POLLIN, 0}, {m_interruption.descriptor(), POLLIN, 0}}};
    int count = ::poll(either.data(), either.size(), patience);
    while (count < 0) {
        if (errno != EINTR) {
            throw InputError(m_name, std::strerror(errno));
        }
        count = ::poll(either.data(), either.size(), patience);
    }
    return count != 0;
}

/// @return false when the input was interrupted.
bool FileInput::waitForBytes() const {
    constexpr int FOR_EVER = -1;
    return poll(FOR_EVER) && !m_interruption.happened();
}

std::optional<std::uint64_t> totalSize(const std::vector<std::string>& paths) {
    std::uint64_t total = 0;
    for (const std::string& path : paths) {
        if (StreamAddress::isOne(path)) {
            return std::nullopt;
        }
        struct stat status {};
        const int failed = path == "-" ? fstat(STDIN_FILENO, &status) : stat(path.c_str(), &status);
        if (failed == 0 && !S_ISREG(status.st_mode)) {
            return std::nullopt;
        }
        total += static_cast<std::uint64_t>(status.st_size);
    }
    return total;
}

} // namespace inspect
