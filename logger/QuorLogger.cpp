#include "QuorLogger.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace {

/// Whether the environment asks for fewer lines than this one.
bool dropped(int level) {
    const char* limit = std::getenv("QUOR_LOG_LEVEL");
    if (limit == nullptr) {
        return false;
    }
    char* end = nullptr;
    const long highest = std::strtol(limit, &end, 10);
    return end != limit && level > highest;
}

std::string formatted(const char* format, va_list values) {
    va_list again;
    va_copy(again, values);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    if (length < 0) {
        return format;
    }
    std::string line(static_cast<std::size_t>(length), '\0');
    std::vsnprintf(line.data(), line.size() + 1, format, values);
    return line;
}

} // namespace

// Weak, so that a program or library with its own logger takes its place in static links, too.
extern "C" __attribute__((weak, visibility("default"))) void quor_log_std_generic(int level, const char* /*tag*/,
                                                                                  const char* format, ...) {
    if (dropped(level)) {
        return;
    }
    va_list values;
    va_start(values, format);
    std::string line = formatted(format, values);
    va_end(values);
    line += '\n';
    // One write per line keeps the lines of several threads apart.
    if (write(STDERR_FILENO, line.data(), line.size()) < 0) {
        return; // nowhere left to complain
    }
}
