#include "exporting/NewFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>
#include <utility>

namespace inspect {

NewFile::NewFile(std::string path)
    : m_path(std::move(path)), m_descriptor(open(m_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666)) {
    if (m_descriptor < 0) {
        fail();
    }
}

NewFile::~NewFile() {
    close(m_descriptor);
}

void NewFile::write(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t count = ::write(m_descriptor, bytes.data(), bytes.size());
        if (count >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            fail();
        }
    }
}

void NewFile::fail() const {
    throw std::runtime_error(m_path + ": " + std::strerror(errno));
}

} // namespace inspect
