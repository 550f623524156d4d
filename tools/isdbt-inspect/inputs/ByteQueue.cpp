#include "inputs/ByteQueue.h"

#include <algorithm>

namespace inspect {

namespace {

constexpr std::size_t BLOCK_SIZE = std::size_t{1} << 16;

/// In seconds: what arrives within is together.
constexpr double TOGETHER = 0.01;

} // namespace

bool ByteQueue::put(const std::uint8_t* data, std::size_t size, const Arrival& arrival) {
    {
        const std::lock_guard lock(m_mutex);
        if (m_size + size > m_capacity) {
            return false;
        }
        if (m_blocks.empty() || m_blocks.back().size() + size > BLOCK_SIZE) {
            m_blocks.emplace_back().reserve(std::max(size, BLOCK_SIZE));
        }
        if (m_batches.empty() || arrival.seconds - m_batches.back().arrival.seconds > TOGETHER) {
            m_batches.push_back({m_allTaken + m_size, arrival});
        }
        m_blocks.back().insert(m_blocks.back().end(), data, data + size);
        m_size += size;
    }
    m_changed.notify_one();
    return true;
}

void ByteQueue::close() {
    {
        const std::lock_guard lock(m_mutex);
        m_closed = true;
    }
    m_changed.notify_one();
}

bool ByteQueue::wait(std::chrono::milliseconds patience) {
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, patience, [this] { return m_size != 0 || m_closed; });
}

std::size_t ByteQueue::take(std::uint8_t* target, std::size_t room) {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_size != 0 || m_closed; });
    while (m_batches.size() > 1 && m_batches[1].begin <= m_allTaken) {
        m_batches.pop_front();
    }
    if (m_batches.size() > 1) {
        room = static_cast<std::size_t>(std::min<std::uint64_t>(room, m_batches[1].begin - m_allTaken));
    }
    m_arrival = m_batches.empty() ? m_arrival : m_batches.front().arrival;
    std::size_t count = 0;
    while (count < room && !m_blocks.empty()) {
        const std::vector<std::uint8_t>& block = m_blocks.front();
        const std::size_t size = std::min(room - count, block.size() - m_taken);
        std::copy_n(block.data() + m_taken, size, target + count);
        count += size;
        m_taken += size;
        if (m_taken == block.size()) {
            m_blocks.pop_front();
            m_taken = 0;
        }
    }
    m_size -= count;
    m_allTaken += count;
    return count;
}

} // namespace inspect
