#include "inputs/AheadInput.h"

#include <algorithm>

namespace inspect {

namespace {

constexpr std::size_t BLOCK_SIZE = std::size_t{1} << 18;
constexpr std::size_t MOST_BLOCKS = 8;

} // namespace

AheadInput::AheadInput(std::unique_ptr<Input> input) : m_input(std::move(input)), m_thread([this] { readAhead(); }) {}

AheadInput::~AheadInput() {
    {
        const std::lock_guard lock(m_mutex);
        m_isWanted = false;
    }
    m_changed.notify_all();
    m_thread.join();
}

std::size_t AheadInput::read(std::uint8_t* target, std::size_t room) {
    if (m_taken == m_block.size()) {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return !m_blocks.empty() || m_ended; });
        if (m_blocks.empty()) {
            if (m_failure) {
                std::rethrow_exception(m_failure);
            }
            return 0;
        }
        m_used.push_back(std::move(m_block));
        m_block = std::move(m_blocks.front());
        m_blocks.pop_front();
        m_taken = 0;
        m_changed.notify_all();
    }
    const std::size_t count = std::min(room, m_block.size() - m_taken);
    std::copy_n(m_block.data() + m_taken, count, target);
    m_taken += count;
    return count;
}

/// What the thread does.
void AheadInput::readAhead() {
    std::unique_lock lock(m_mutex);
    while (m_isWanted && !m_ended) {
        std::vector<std::uint8_t> block;
        if (!m_used.empty()) {
            block = std::move(m_used.back());
            m_used.pop_back();
        }
        lock.unlock();
        block.resize(BLOCK_SIZE);
        std::exception_ptr failure;
        try {
            block.resize(m_input->read(block.data(), block.size()));
        } catch (...) {
            failure = std::current_exception();
            block.clear();
        }
        lock.lock();
        m_ended = block.empty();
        m_failure = failure;
        if (!m_ended) {
            m_blocks.push_back(std::move(block));
        }
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_blocks.size() < MOST_BLOCKS || !m_isWanted; });
    }
}

} // namespace inspect
