#pragma once

#include "packets/Input.h"

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
    bool put(const std::uint8_t* data, std::size_t size, const Arrival& arrival = {});

    /// No more comes.
    void close();

    /// Waits until take() need not, but no longer than that. @return whether it need not.
    bool wait(std::chrono::milliseconds patience);

    /// Waits for bytes. @return their number, of bytes that arrived together; 0 when the queue is closed and empty.
    std::size_t take(std::uint8_t* target, std::size_t room);

    /// When the bytes arrived that were taken last.
    const Arrival& arrival() const { return m_arrival; }

private:
    /// Bytes from one on that arrived together.
    struct Batch {
        std::uint64_t begin;
        Arrival arrival;
    };

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::vector<std::uint8_t>> m_blocks;
    std::size_t m_taken = 0; ///< bytes of the first block
    std::size_t m_size = 0;  ///< bytes of all
    std::deque<Batch> m_batches;
    std::uint64_t m_allTaken = 0; ///< bytes so far
    Arrival m_arrival{};
    std::size_t m_capacity;
    bool m_closed = false;
};

} // namespace inspect
