#include "terminal/Output.h"

#include <cerrno>
#include <cstring>
#include <string>
#include <unistd.h>

namespace inspect {

Output::Output(int descriptor, ProgressLine* progress)
    : m_descriptor(descriptor), m_progress(isatty(descriptor) == 1 ? progress : nullptr) {}

void Output::write(std::string_view text) const {
    if (m_progress != nullptr) {
        m_progress->erase();
    }
    while (!text.empty()) {
        const ssize_t count = ::write(m_descriptor, text.data(), text.size());
        if (count >= 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EPIPE) {
            throw OutputClosed();
        } else if (errno != EINTR) {
            throw std::runtime_error(std::string("standard output: ") + std::strerror(errno));
        }
    }
}

} // namespace inspect
