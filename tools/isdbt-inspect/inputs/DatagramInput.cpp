#include "inputs/DatagramInput.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>

namespace inspect {

namespace {

/// So many datagrams are received before anything else is looked at.
constexpr int BATCH = 256;

} // namespace

DatagramInput::DatagramInput(const std::string& address, const Interruption& interruption, std::size_t queueSize)
    : m_name(address), m_interruption(interruption), m_socket(listenTo(address)), m_queue(queueSize),
      m_stop(eventfd(0, EFD_CLOEXEC)), m_thread([this] { receive(); }) {}

DatagramInput::~DatagramInput() {
    eventfd_write(m_stop, 1);
    m_thread.join();
    close(m_stop);
}

DatagramSocket DatagramInput::listenTo(const std::string& address) {
    try {
        return DatagramSocket(StreamAddress(address));
    } catch (const std::system_error& error) {
        throw InputError(address, error.what());
    }
}

std::size_t DatagramInput::read(std::uint8_t* target, std::size_t room) {
    const std::size_t count = m_queue.take(target, room);
    if (count == 0 && !m_error.empty()) {
        throw InputError(m_name, m_error);
    }
    return count;
}

std::vector<Loss> DatagramInput::losses() const {
    std::vector<Loss> losses;
    if (m_missing != 0) {
        losses.push_back({"lost RTP datagram", "lost RTP datagrams", m_missing});
    }
    if (m_dropped != 0) {
        losses.push_back({"datagram dropped here", "datagrams dropped here", m_dropped});
    }
    return losses;
}

/// What the thread does.
void DatagramInput::receive() {
    try {
        receiveUntilInterrupted();
    } catch (const std::exception& error) {
        m_error = error.what();
    }
    m_queue.close();
}

void DatagramInput::receiveUntilInterrupted() {
    std::array<pollfd, 3> any{
        {{m_socket.descriptor(), POLLIN, 0}, {m_interruption.descriptor(), POLLIN, 0}, {m_stop, POLLIN, 0}}};
    while (any[1].revents == 0 && any[2].revents == 0) {
        if (poll(any.data(), any.size(), -1) > 0) {
            receiveWhatIsThere();
        } else if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category(), "receive");
        }
    }
}

void DatagramInput::receiveWhatIsThere() {
    for (int count = 0; count < BATCH; ++count) {
        const std::optional<Datagram> datagram = m_socket.receive();
        if (!datagram) {
            return;
        }
        take(*datagram);
    }
}

void DatagramInput::take(const Datagram& datagram) {
    m_dropped += datagram.dropped;
    const std::uint8_t* data = datagram.data;
    std::size_t size = datagram.size;
    if (const std::optional<RtpDatagram> rtp = readRtp(data, size)) {
        const std::optional<std::uint32_t> missing = m_sequence.take(*rtp);
        if (!missing) {
            return;
        }
        m_missing += *missing - std::min(*missing, datagram.dropped); // those were not lost on the way
        data = rtp->payload;
        size = rtp->size;
    }
    if (size != 0 && !m_queue.put(data, size, datagram.arrival)) {
        ++m_dropped;
    }
}

} // namespace inspect
