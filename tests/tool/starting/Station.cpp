#include "tool/starting/Station.h"

#include "Inspector.h"
#include "inputs/MemoryInput.h"

#include <algorithm>
#include <map>

namespace {

constexpr std::size_t BLOCK_SIZE = 64;

/// Packets, and a clock that goes on with each section.
class Multiplex {
public:
    void carry(unsigned pid, const ByteVector& section, bool isScrambled = false) {
        const ByteVector payload = join({hex("00"), section});
        for (std::size_t at = 0; at < payload.size(); at += ROOM) {
            ByteVector packet = join({hex("47"), u16(pid, at == 0 ? 0x4000 : 0)});
            packet.push_back(static_cast<QUOR_U8>((isScrambled ? 0x90U : 0x10U) | m_counters[pid]++ % 16));
            const std::size_t end = std::min(at + ROOM, payload.size());
            packet.insert(packet.end(), payload.begin() + static_cast<std::ptrdiff_t>(at),
                          payload.begin() + static_cast<std::ptrdiff_t>(end));
            append(packet);
        }
        tick();
    }

    const ByteVector& bytes() const { return m_bytes; }

private:
    static constexpr std::size_t ROOM = 184;

    void tick() {
        constexpr std::uint64_t STEP = 1800; // of 90 kHz
        ByteVector packet = hex("47 0100 20 B7 10");
        const std::uint64_t reference = (m_ticks += STEP) << 15U | 0x7E00U;
        for (unsigned shift = 48; shift > 0; shift -= 8) {
            packet.push_back(static_cast<QUOR_U8>(reference >> (shift - 8)));
        }
        append(packet);
    }

    void append(ByteVector packet) {
        packet.resize(188, 0xFF);
        m_bytes.insert(m_bytes.end(), packet.begin(), packet.end());
    }

    ByteVector m_bytes;
    std::map<unsigned, unsigned> m_counters;
    std::uint64_t m_ticks = 0;
};

LongHeader named(QUOR_U16 extension) {
    LongHeader header;
    header.extension = extension;
    return header;
}

/// Keeps what is said of applications.
class Listener : public inspect::Renderer {
public:
    void section(const inspect::SectionReport& /*report*/) override {}
    void end(const inspect::Summary& summary, const inspect::Multiplex& /*multiplex*/,
             const inspect::Faults& /*faults*/) override {
        applications = summary.applications;
    }

    std::vector<inspect::ApplicationReport> applications;
};

} // namespace

ByteVector Station::application() {
    return hex("00 09 05 0001 01 00 00 FF 28 01");
}

ByteVector Station::transport() {
    return hex("02 05 0001 01 7F 0B");
}

ByteVector Station::location(QUOR_U8 tag, const std::string& base, const std::string& extension,
                             const std::string& initial) {
    return descriptor(tag, join({wire::counted8(text(base)), wire::counted8(text(extension)), text(initial)}));
}

ByteVector Station::usual(const std::string& base, const std::string& initial) {
    return join({application(), transport(), location(0x07, base, "", initial)});
}

std::vector<Carried> Station::files() {
    return {{1, wire::directory("srg", hex("01"), {{"guia", "dir", 2, hex("02")}})},
            {2, wire::directory("dir", hex("02"), {{"principal.ncl", "fil", 3, hex("03")}})},
            {3, wire::file(hex("03"), text("<ncl id=\"principal\"/>"))}};
}

std::vector<ByteVector> Station::sections(const std::vector<Carried>& carried, unsigned version) {
    std::vector<wire::Announced> announced;
    for (const Carried& each : carried) {
        announced.push_back({each.module, each.object.size(), 1, each.descriptors});
    }
    std::vector<ByteVector> all{wire::gatewaySection(2, 1, hex("01")),
                                wire::objectDii({2, BLOCK_SIZE, 0x80000002}, announced)};
    for (const Carried& each : carried) {
        for (ByteVector& block : wire::blocks({each.module, 0, version}, BLOCK_SIZE, each.object)) {
            all.push_back(std::move(block));
        }
    }
    return all;
}

ByteVector Station::bytes() const {
    Multiplex multiplex;
    const ByteVector pmt = longSection(
        0x02, named(0xE6A0),
        join({hex("E100 F000"), hex("05 E130 " + ait), hex(carouselComponent), hex("0C E150 F003 520150")}));
    const ByteVector application = join({hex("00000735 0001"), hex(controlCode), loopOf(descriptors)});
    const ByteVector table = longSection(0x74, named(0x0009), join({hex("F000"), loopOf(application)}));
    for (unsigned turn = 0; turn < turns; ++turn) {
        multiplex.carry(0x0000, longSection(0x00, named(0x0735), hex("E6A0 E101")));
        multiplex.carry(0x0101, pmt);
        multiplex.carry(0x0130, table);
        for (const ByteVector& each : events) {
            multiplex.carry(0x0150, each);
        }
        for (const ByteVector& each : carousel) {
            multiplex.carry(0x0140, each, isScrambled);
        }
    }
    return multiplex.bytes();
}

inspect::ApplicationReport reportOn(const Station& station, const inspect::ReceiverProfiles& receiver) {
    Listener listener;
    inspect::Interest interest;
    interest.carousels = true;
    interest.pids.set(0x0140);
    interest.receiver = receiver;
    const inspect::Conventions conventions{inspect::Charset(), inspect::TimeZone()};
    inspect::Inspector inspector(listener, interest, conventions);
    inspect::MemoryInput input("station", station.bytes());
    inspector.run(input);
    return listener.applications.at(0);
}

Lines stepsOf(const inspect::ApplicationReport& report, std::string_view name) {
    using Result = inspect::Step::Result;
    Lines lines;
    for (const inspect::Step& step : report.steps) {
        if (step.name == name) {
            lines.push_back((step.result == Result::Passed   ? "passed: "
                             : step.result == Result::Failed ? "failed: "
                                                             : "not seen: ") +
                            step.text);
        }
    }
    return lines;
}
