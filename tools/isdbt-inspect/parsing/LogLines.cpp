#include "parsing/LogLines.h"

#include "QuorLogger.h"

#include <cstdarg>
#include <cstdio>

namespace inspect {

namespace {

thread_local LogLines* current = nullptr;

} // namespace

LogLines::LogLines() : m_outer(current) {
    current = this;
}

LogLines::~LogLines() {
    current = m_outer;
}

} // namespace inspect

/// Takes the place of the platform's logger.
extern "C" __attribute__((visibility("default"))) void quor_log_std_generic(int /*level*/, const char* /*tag*/,
                                                                            const char* format, ...) {
    if (inspect::current == nullptr) {
        return;
    }
    va_list values;
    va_start(values, format);
    va_list again;
    va_copy(again, values);
    const int length = std::vsnprintf(nullptr, 0, format, values);
    va_end(values);
    std::string line(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    std::vsnprintf(line.data(), line.size() + 1, format, again);
    va_end(again);
    inspect::current->add(std::move(line));
}
