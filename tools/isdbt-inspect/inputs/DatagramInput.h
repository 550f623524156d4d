#pragma once

#include "inputs/ByteQueue.h"
#include "inputs/DatagramSocket.h"
#include "inputs/Interruption.h"
#include "inputs/RtpSequence.h"
#include "packets/Input.h"

#include <atomic>
#include <thread>

namespace inspect {

/// A transport stream in datagrams, in RTP or without. It ends when the user interrupts it.
///
/// A thread of its own receives them, so that nothing is lost while the output waits for a slow terminal.
class DatagramInput : public Input {
public:
    /// @param address as StreamAddress understands it
    /// @param queueSize bytes that may wait until they are read
    /// @throws InputError when it cannot be received from
    DatagramInput(const std::string& address, const Interruption& interruption, std::size_t queueSize);
    ~DatagramInput() override;
    DatagramInput(const DatagramInput&) = delete;
    DatagramInput& operator=(const DatagramInput&) = delete;

    const std::string& name() const override { return m_name; }
    std::size_t read(std::uint8_t* target, std::size_t room) override;
    bool wait(std::chrono::milliseconds patience) override { return m_queue.wait(patience); }
    bool interrupted() const override { return m_interruption.happened(); }
    bool isLive() const override { return true; }
    std::optional<Arrival> arrival() const override { return m_queue.arrival(); }
    std::vector<Loss> losses() const override;

private:
    static DatagramSocket listenTo(const std::string& address);
    void receive();
    void receiveUntilInterrupted();
    void receiveWhatIsThere();
    void take(const Datagram& datagram);

    std::string m_name;
    const Interruption& m_interruption;
    DatagramSocket m_socket;
    ByteQueue m_queue;
    RtpSequence m_sequence;
    std::atomic<std::uint64_t> m_missing{0}; ///< by their sequence numbers
    std::atomic<std::uint64_t> m_dropped{0};
    std::string m_error; ///< of the thread, once the queue is closed
    int m_stop;          ///< an event that ends the thread
    std::thread m_thread;
};

} // namespace inspect
