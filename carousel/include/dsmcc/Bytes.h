#ifndef DSMCC_BYTES_H
#define DSMCC_BYTES_H

#include <cstddef>
#include <cstdint>
#include <vector>

/// DSM-CC data and object carousels, from sections to files.
namespace dsmcc {

/// Bytes that their holder owns.
using Bytes = std::vector<std::uint8_t>;

/// Bytes that somebody else owns.
struct ByteView {
    const std::uint8_t* data = nullptr; ///< the first; null when there is none
    std::size_t size = 0;               ///< how many

    /// The first byte.
    const std::uint8_t* begin() const { return data; }
    /// Behind the last byte.
    const std::uint8_t* end() const { return data + size; }
};

} // namespace dsmcc

#endif
