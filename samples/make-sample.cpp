#include "Multiplexer.h"
#include "Station.h"
#include "Tables.h"

#include <cstdio>
#include <fstream>

namespace {

using sample::Multiplexer;

constexpr unsigned SECOND = Multiplexer::SLOTS_PER_SECOND;
constexpr unsigned DURATION = 2 * SECOND;

constexpr std::uint8_t VIDEO = 0xE0;
constexpr std::uint8_t AUDIO = 0xC0;

/// Sends a table as it is, again and again.
void repeat(Multiplexer& multiplexer, std::uint16_t pid, unsigned period, unsigned first,
            const sample::Bytes& section) {
    multiplexer.repeatSection(pid, period, first, [section](unsigned) { return section; });
}

/// The more a receiver waits for a table, the more often it comes.
void addTables(Multiplexer& multiplexer) {
    repeat(multiplexer, sample::PAT_PID, SECOND / 10, 1, sample::pat());
    repeat(multiplexer, sample::HD_PMT_PID, SECOND / 10, 8, sample::hdPmt());
    repeat(multiplexer, sample::ONE_SEG_PMT_PID, SECOND / 5, 11, sample::oneSegPmt());
    repeat(multiplexer, sample::NIT_PID, SECOND, 14, sample::nit());
    repeat(multiplexer, sample::SDT_PID, SECOND, 20, sample::sdt());
    repeat(multiplexer, sample::AIT_PID, SECOND / 2, 26, sample::nclAit());
    repeat(multiplexer, sample::AIT_PID, SECOND / 2, 32, sample::javaAit());
    repeat(multiplexer, sample::EVENTS_PID, SECOND / 4, 39, sample::streamEvents());
    repeat(multiplexer, sample::SDTT_PID, 2 * SECOND, 44, sample::sdtt());
    multiplexer.repeatSection(sample::TOT_PID, SECOND, 2, [](unsigned slot) { return sample::tot(slot / SECOND); });
}

/// Two seconds of the multiplex. Periods and first slots spread the load.
sample::Bytes makeSample() {
    Multiplexer multiplexer;
    multiplexer.repeatClock(sample::HD_PCR_PID, SECOND / 20, 0);
    multiplexer.repeatClock(sample::ONE_SEG_PCR_PID, SECOND / 20, 4);
    addTables(multiplexer);
    multiplexer.repeatFiller(sample::HD_VIDEO_PID, SECOND / 40, 3, VIDEO);
    multiplexer.repeatFiller(sample::HD_AUDIO_PID, SECOND / 20, 5, AUDIO);
    multiplexer.repeatFiller(sample::ONE_SEG_VIDEO_PID, SECOND / 20, 6, VIDEO);
    multiplexer.repeatFiller(sample::ONE_SEG_AUDIO_PID, SECOND / 10, 7, AUDIO);
    return multiplexer.run(DURATION);
}

} // namespace

/// Writes the sample stream, the same bytes each time, to the file that is given.
int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("Usage: make-sample FILE\n", stderr);
        return 2;
    }
    const sample::Bytes stream = makeSample();
    std::ofstream file(argv[1], std::ios::binary);
    file.write(reinterpret_cast<const char*>(stream.data()), static_cast<std::streamsize>(stream.size()));
    file.close();
    if (!file) {
        std::fprintf(stderr, "make-sample: %s: cannot be written\n", argv[1]);
        return 1;
    }
    return 0;
}
