#include "inputs/DecompressedInput.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>

namespace inspect {

namespace {

constexpr std::size_t BUFFER_SIZE = std::size_t{1} << 16;

} // namespace

DecompressedInput::DecompressedInput(std::unique_ptr<Input> input)
    : ForwardedInput(std::move(input)), m_buffer(BUFFER_SIZE) {}

std::size_t DecompressedInput::read(std::uint8_t* target, std::size_t room) {
    if (!std::exchange(m_begun, true)) {
        begin();
    }
    return m_decompressor != nullptr ? decompress(target, room) : readOn(target, room);
}

/// Reads as much as tells how the input is compressed.
void DecompressedInput::begin() {
    std::size_t count = 1;
    while (m_end < MAGIC_SIZE && count != 0) {
        count = ForwardedInput::read(m_buffer.data() + m_end, m_buffer.size() - m_end);
        m_end += count;
    }
    m_decompressor = decompressorFor(m_buffer.data(), m_end);
}

std::size_t DecompressedInput::readOn(std::uint8_t* target, std::size_t room) {
    if (available() == 0) {
        return ForwardedInput::read(target, room);
    }
    const std::size_t count = std::min(room, available());
    std::copy_n(m_buffer.data() + m_at, count, target);
    m_at += count;
    return count;
}

std::size_t DecompressedInput::decompress(std::uint8_t* target, std::size_t room) {
    while (m_failure.empty()) {
        if (available() == 0) {
            m_at = 0;
            m_end = ForwardedInput::read(m_buffer.data(), m_buffer.size());
        }
        const Decompressor::Progress progress =
            m_decompressor->advance(m_buffer.data() + m_at, available(), target, room);
        m_at += progress.taken;
        m_taken += progress.taken;
        m_failure = progress.failure;
        if (progress.taken == 0 && progress.written == 0 && m_failure.empty()) {
            if (m_decompressor->complete() || interrupted()) {
                return 0;
            }
            m_failure = "cut off";
        }
        if (progress.written != 0) {
            return progress.written;
        }
    }
    throw InputError(name(), fmt::format("cannot be decompressed beyond byte {}: {}", m_taken, m_failure));
}

} // namespace inspect
