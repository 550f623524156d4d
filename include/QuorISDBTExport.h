#ifndef QUOR_ISDBT_EXPORT_H
#define QUOR_ISDBT_EXPORT_H

/// @file
/// Marks the classes that leave the shared object; everything else in it is hidden.

#if defined(__GNUC__)
#define QUOR_ISDBT_API __attribute__((visibility("default")))
#else
#define QUOR_ISDBT_API
#endif

#endif
