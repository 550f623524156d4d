#ifndef QUOR_DETAIL_LOG_H
#define QUOR_DETAIL_LOG_H

#include "QuorLogger.h"

/// Whatever is logged is about bad input: a sound section takes no way that leads here.
extern "C" [[gnu::cold]] void quor_log_std_generic(int level, const char* tag, const char* format, ...);

namespace Quor::detail {

/// The only level in use: errors and warnings.
constexpr int LOG_LEVEL = 4;

/// The tag of every table and descriptor parser.
constexpr const char* LOG_TAG = "ISDBTUtils";

} // namespace Quor::detail

/// Writes one line to the receiver's log. Every format begins with "%s: ", which takes LOG_TAG. A macro, so that the
/// compiler checks each format against its values.
#define QUOR_ISDBT_LOG(...) quor_log_std_generic(Quor::detail::LOG_LEVEL, Quor::detail::LOG_TAG, __VA_ARGS__)

#endif
