#ifndef DSMCC_LIMITS_H
#define DSMCC_LIMITS_H

#include <cstddef>

namespace dsmcc {

/// What a stream may take of its receiver.
struct Limits {
    std::size_t carousels = 8;                    ///< download ids on the PID
    std::size_t groups = 256;                     ///< DIIs in a carousel
    std::size_t modules = 4096;                   ///< in a carousel, those that are not announced included
    std::size_t memory = std::size_t{64} << 20;   ///< bytes of blocks, modules and inflated modules of a carousel
    std::size_t inflated = std::size_t{32} << 20; ///< bytes of an inflated module
    std::size_t objects = 65536;                  ///< of a carousel, with their descriptors, bindings, taps and events
    std::size_t entries = 65536;                  ///< in a tree
    std::size_t depth = 32;                       ///< directories one in the other
    std::size_t name = 255;                       ///< bytes of a name in a directory

    /// Seconds without a section after which a carousel gives way to another one, and a DII that others of its carousel
    /// outlive is forgotten.
    double silence = 120;

    /// Whether the CRC_32 of sections is checked. Section filters in hardware do that, too.
    bool crc32 = true;
};

} // namespace dsmcc

#endif
