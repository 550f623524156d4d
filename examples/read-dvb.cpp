// Reads the program association table and the service description table from the section filters of a Linux
// demultiplexer, and lists the services on the air.
//
// Exit status: 0 listed, 1 a table did not come or was rejected, 2 wrong usage, 3 no demultiplexer.
#include "descriptors/TServiceDescriptor.h"
#include "pat/TPATTable.h"
#include "sdt/TSDTTable.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <linux/dvb/dmx.h>
#include <memory>
#include <sys/ioctl.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr const char* DEFAULT_DEVICE = "/dev/dvb/adapter0/demux0";
constexpr std::size_t LONGEST_SECTION = 4096;
constexpr unsigned TIMEOUT_MILLISECONDS = 5000; // both tables are repeated several times in that time

/// One section filter of the demultiplexer; closing the device frees it.
class SectionFilter {
public:
    explicit SectionFilter(const char* device) : m_device(open(device, O_RDWR)) {}
    ~SectionFilter() {
        if (m_device >= 0) {
            close(m_device);
        }
    }
    SectionFilter(const SectionFilter&) = delete;
    SectionFilter& operator=(const SectionFilter&) = delete;

    bool isOpen() const { return m_device >= 0; }

    /// Lets the sections of one PID and table_id through. The driver checks their CRC_32, the library does not.
    bool start(QUOR_U16 pid, QUOR_U8 tableId) const {
        dmx_sct_filter_params parameters;
        std::memset(&parameters, 0, sizeof parameters);
        parameters.pid = pid;
        parameters.filter.filter[0] = tableId;
        parameters.filter.mask[0] = 0xFF;
        parameters.timeout = TIMEOUT_MILLISECONDS;
        parameters.flags = DMX_IMMEDIATE_START | DMX_CHECK_CRC;
        return ioctl(m_device, DMX_SET_FILTER, &parameters) == 0;
    }

    /// Waits for the next section; empty when none comes. One read() is one section.
    std::vector<QUOR_U8> read() const {
        std::vector<QUOR_U8> section(LONGEST_SECTION);
        ssize_t length = 0;
        do {
            length = ::read(m_device, section.data(), section.size());
        } while (length < 0 && (errno == EINTR || errno == EOVERFLOW)); // what overflowed is repeated
        section.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
        return section;
    }

private:
    int m_device;
};

/// The next section of a PID as a table; null when it does not come, or is rejected.
template <class Table> std::unique_ptr<Table> receive(const char* device, QUOR_U16 pid, QUOR_U8 tableId) {
    const SectionFilter filter(device);
    if (!filter.start(pid, tableId)) {
        return nullptr;
    }
    std::vector<QUOR_U8> section = filter.read();
    return std::unique_ptr<Table>(
        Table::parse(section.data(), static_cast<QUOR_U32>(section.size()), 0, 0, nullptr, nullptr));
}

void print(const Quor::TPATTable& pat, const Quor::TSDTTable& sdt) {
    const std::unique_ptr<std::list<QUOR_U16>> services(pat.getProgramNumbers());
    for (const QUOR_U16 service : *services) {
        const Quor::TServiceDescription* const description = sdt.getServiceDescription(service);
        const Quor::TServiceDescriptor* const descriptor = description ? description->getServiceDescriptor() : nullptr;
        std::printf("%5u  %s\n", unsigned{service}, descriptor ? descriptor->getServiceName().c_str() : "(no name)");
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 2) {
        std::fprintf(stderr, "usage: read-dvb [DEVICE]\n");
        return 2;
    }
    const char* const device = argc == 2 ? argv[1] : DEFAULT_DEVICE;
    if (!SectionFilter(device).isOpen()) {
        std::fprintf(stderr, "%s: no demultiplexer: %s\n", device, std::strerror(errno));
        return 3;
    }
    const std::unique_ptr<Quor::TPATTable> pat = receive<Quor::TPATTable>(device, 0x0000, 0x00);
    const std::unique_ptr<Quor::TSDTTable> sdt = receive<Quor::TSDTTable>(device, 0x0011, 0x42);
    if (!pat || !sdt) {
        std::fprintf(stderr, "%s: no services. Is the tuner locked?\n", device);
        return 1;
    }
    print(*pat, *sdt);
    return 0;
}
