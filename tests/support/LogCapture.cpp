#include "support/LogCapture.h"

#include "QuorLogger.h"

#include <cstdarg>
#include <cstdio>

namespace {

thread_local LogCapture* current = nullptr;

} // namespace

// Takes the place of the logger library's definition, in static and in shared links.
extern "C" __attribute__((visibility("default"))) void quor_log_std_generic(int level, const char* tag,
                                                                            const char* format, ...) {
    if (current == nullptr) {
        return;
    }
    char text[1024];
    va_list values;
    va_start(values, format);
    std::vsnprintf(text, sizeof text, format, values);
    va_end(values);
    current->record({level, tag, text});
}

LogCapture::LogCapture() : m_outer(current) {
    current = this;
}

LogCapture::~LogCapture() {
    current = m_outer;
}

std::vector<std::string> LogCapture::lines() const {
    std::vector<std::string> texts;
    for (const Line& line : m_records) {
        texts.push_back(line.text);
    }
    return texts;
}
