#pragma once

#include "packets/Input.h"

#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>

namespace inspect {

/// Another input, which a thread of its own reads, and decompresses where it is compressed, while what came before is
/// looked at.
class AheadInput : public Input {
public:
    /// @param input that never waits for long, as a file does
    explicit AheadInput(std::unique_ptr<Input> input);
    ~AheadInput() override;
    AheadInput(const AheadInput&) = delete;
    AheadInput& operator=(const AheadInput&) = delete;

    const std::string& name() const override { return m_input->name(); }
    std::size_t read(std::uint8_t* target, std::size_t room) override;
    bool interrupted() const override { return m_input->interrupted(); }

private:
    void readAhead();

    std::unique_ptr<Input> m_input;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::vector<std::uint8_t>> m_blocks;
    std::vector<std::vector<std::uint8_t>> m_used; ///< to be filled again, as new memory takes longer than to read
    std::vector<std::uint8_t> m_block;             ///< that is being taken
    std::size_t m_taken = 0;                       ///< of it
    std::exception_ptr m_failure;
    bool m_ended = false;
    bool m_isWanted = true;
    std::thread m_thread; ///< the last member: it uses the others
};

} // namespace inspect
