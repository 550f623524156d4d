#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace inspect {

/// Makes of compressed bytes what they were, piece by piece.
class Decompressor {
public:
    /// What became of a piece.
    struct Progress {
        std::size_t taken;   ///< bytes from the front of what was given
        std::size_t written; ///< bytes
        std::string failure; ///< why it goes on no further; empty while it does
    };

    Decompressor() = default;
    virtual ~Decompressor() = default;
    Decompressor(const Decompressor&) = delete;
    Decompressor& operator=(const Decompressor&) = delete;

    /// Takes bytes until they are used up or there is no more room.
    /// @param size 0 once no more come
    virtual Progress advance(const std::uint8_t* data, std::size_t size, std::uint8_t* target, std::size_t room) = 0;

    /// Whether the bytes may end here.
    virtual bool complete() const = 0;
};

/// So many bytes tell how a file is compressed.
constexpr std::size_t MAGIC_SIZE = 6;

/// The decompressor for what begins with these bytes: gzip, xz or Zstandard. Null when they are not compressed.
std::unique_ptr<Decompressor> decompressorFor(const std::uint8_t* data, std::size_t size);

} // namespace inspect
