#ifndef QUOR_LOGGER_H
#define QUOR_LOGGER_H

/// @file
/// The platform's logger. A receiver links the platform's own library; the stand-in beside this header writes the
/// lines to standard error.

#if defined(__GNUC__)
#define QUOR_LOGGER_PRINTF(text, values) __attribute__((format(printf, text, values)))
#else
#define QUOR_LOGGER_PRINTF(text, values)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/// Logs one line.
/// @param level  severity; 4 is errors and warnings.
/// @param tag    the component that speaks.
/// @param format printf format of the line, without a newline at its end.
void quor_log_std_generic(int level, const char* tag, const char* format, ...) QUOR_LOGGER_PRINTF(3, 4);

#ifdef __cplusplus
}
#endif

#endif
