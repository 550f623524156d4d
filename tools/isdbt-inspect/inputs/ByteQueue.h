#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <vector>

namespace inspect {

/// Bytes on their way from a thread that must not wait to one that may. It needs less than twice the memory of the
/// bytes that wait in it, however few come at a time.
class ByteQueue {
public:
    /// @param capacity how many bytes wait in it at most
    explicit ByteQueue(std::size_t capacity) : m_capacity(capacity) {}

    /// @return false when there is no room: the bytes are dropped.
    bool put(const std::uint8_t* data, std::size_t size);

    /// No more comes.
    void close();

    /// Waits until take() need not, but no longer than that. @return whether it need not.
    bool wait(std::chrono::milliseconds patience);

    /// Waits for bytes. @return their number; 0 when the queue is closed and empty.
    std::size_t take(std::uint8_t* target, std::size_t room);

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::vector<std::uint8_t>> m_blocks;
    std::size_t m_taken = 0; ///< bytes of the first block
    std::size_t m_size = 0;  ///< bytes of all
    std::size_t m_capacity;
    bool m_closed = false;
};

} // namespace inspect
