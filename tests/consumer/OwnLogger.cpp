// A logger that is not the stand-in: the program's own, or the platform's library.
#include <cstdarg>
#include <cstdio>

extern "C" __attribute__((visibility("default"))) void quor_log_std_generic(int level, const char* tag,
                                                                            const char* format, ...) {
    va_list values;
    va_start(values, format);
    std::fprintf(stderr, "own logger, level %d, %s: ", level, tag);
    std::vfprintf(stderr, format, values);
    std::fputc('\n', stderr);
    va_end(values);
}
