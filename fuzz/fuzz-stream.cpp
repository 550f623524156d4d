// Fuzzes the whole way through the tool: packets, sections, following, parsing, describing, rendering.

#include "Inspector.h"
#include "SectionMutator.h"
#include "Views.h"

#include <algorithm>
#include <fcntl.h>
#include <memory>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

constexpr std::size_t PACKET = 188;
constexpr std::size_t SYNC = 0;
constexpr std::uint8_t SYNC_BYTE = 0x47;

/// A stream that comes in pieces.
class Pieces : public inspect::Input {
public:
    Pieces(const std::uint8_t* data, std::size_t size, std::size_t piece)
        : m_data(data), m_size(size), m_piece(piece) {}

    const std::string& name() const override { return m_name; }

    std::size_t read(std::uint8_t* target, std::size_t room) override {
        const std::size_t count = std::min({room, m_size, m_piece});
        std::copy_n(m_data, count, target);
        m_data += count;
        m_size -= count;
        return count;
    }

private:
    std::string m_name = "fuzzed";
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_piece;
};

/// One of the views and outputs.
std::unique_ptr<inspect::Renderer> rendererOf(unsigned number, inspect::Output& output) {
    inspect::Style style;
    style.wraps = true;
    style.width = 60;
    const inspect::View& view = inspect::views()[number / 2 % inspect::views().size()];
    const bool asText = number % 2 != 0 && view.text != nullptr; // one is for programs alone
    return asText ? view.text(output, style) : view.json(output);
}

/// Changes the section that begins with a packet, if it ends there, too.
void mutateSectionOf(std::uint8_t* packet, Random& random) {
    constexpr std::size_t HEADER = 5; // with pointer_field
    constexpr std::uint8_t STUFFING = 0xFF;
    const bool begins = (packet[1] & 0x40U) != 0 && (packet[3] & 0x30U) == 0x10 && packet[4] == 0;
    const std::size_t size = 3U + ((packet[HEADER + 1] & 0x0FU) << 8U | packet[HEADER + 2]);
    if (!begins || size > PACKET - HEADER) {
        return;
    }
    ByteVector section(packet + HEADER, packet + HEADER + size);
    mutateSection(section, PACKET - HEADER, random);
    section.resize(PACKET - HEADER, STUFFING);
    std::copy(section.begin(), section.end(), packet + HEADER);
}

void mutateStream(ByteVector& stream, std::size_t maxSize, Random& random) {
    const std::size_t packets = stream.size() / PACKET;
    const auto packet = [&](std::size_t at) { return stream.begin() + static_cast<std::ptrdiff_t>(at * PACKET); };
    switch (packets == 0 ? 0 : random() % 8) {
    case 0:
        stream.resize(std::max<std::size_t>(maxSize, 1));
        stream.resize(LLVMFuzzerMutate(stream.data(), std::min(packets * PACKET, maxSize), maxSize));
        break;
    case 1: { // a packet twice
        const ByteVector again(packet(random() % packets), packet(packets));
        stream.insert(packet(random() % packets), again.begin(), again.begin() + PACKET);
        break;
    }
    case 2: {
        const std::size_t lost = random() % packets;
        stream.erase(packet(lost), packet(lost + 1));
        break;
    }
    case 3: { // the header of a packet
        const std::size_t at = (random() % packets) * PACKET + random() % 8;
        stream[at] = static_cast<QUOR_U8>(random());
        break;
    }
    default:
        mutateSectionOf(&*packet(random() % packets), random);
        break;
    }
    for (std::size_t at = 0; at + PACKET <= stream.size() && random() % 32 != 0; at += PACKET) {
        stream[at + SYNC] = SYNC_BYTE;
    }
}

} // namespace

/// How the stream is cut into pieces and shown; then the stream.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const inspect::Conventions conventions;
    static const inspect::Interest interest;
    static const int nowhere = open("/dev/null", O_WRONLY);
    if (size == 0) {
        return 0;
    }
    constexpr std::size_t SMALLEST = 16;
    Pieces input(data + 1, size - 1, SMALLEST * (1U + data[0]));
    inspect::Output output(nowhere, inspect::Colour::Always);
    const std::unique_ptr<inspect::Renderer> renderer = rendererOf(data[0], output);
    inspect::Inspector inspector(*renderer, interest, conventions);
    try {
        inspector.run(input);
    } catch (const inspect::InputError&) {
        return 0; // as it is said of what is no stream
    }
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
    Random random(seed);
    if (size < 2 || maxSize < 2) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    ByteVector stream(data + 1, data + size);
    mutateStream(stream, maxSize - 1, random);
    stream.resize(std::min(stream.size(), maxSize - 1));
    std::copy(stream.begin(), stream.end(), data + 1);
    return 1 + stream.size();
}
