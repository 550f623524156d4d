#ifndef QUOR_DEFS_H
#define QUOR_DEFS_H

/// @file
/// The platform's fixed-width types. They are global names, as the platform's own definitions header has them.

#include <cstdint>

using QUOR_U8 = std::uint8_t;   ///< 8 bits, unsigned
using QUOR_U16 = std::uint16_t; ///< 16 bits, unsigned
using QUOR_U32 = std::uint32_t; ///< 32 bits, unsigned
using QUOR_S32 = std::int32_t;  ///< 32 bits, signed

/// A 32-bit integer used as a boolean: 0 is false, anything else true.
using QUOR_BOOL = std::int32_t;

using U8 = QUOR_U8;     ///< short for QUOR_U8
using U16 = QUOR_U16;   ///< short for QUOR_U16
using U32 = QUOR_U32;   ///< short for QUOR_U32
using S32 = QUOR_S32;   ///< short for QUOR_S32
using BOOL = QUOR_BOOL; ///< short for QUOR_BOOL

#endif
