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

/// Two seconds of the multiplex. Periods and first slots spread the load.
sample::Bytes makeSample() {
    Multiplexer multiplexer;
    multiplexer.repeatClock(sample::HD_PCR_PID, SECOND / 20, 0);
    multiplexer.repeatClock(sample::ONE_SEG_PCR_PID, SECOND / 20, 4);

    multiplexer.repeatSection(sample::PAT_PID, SECOND / 10, 1, [](unsigned) { return sample::pat(); });
    multiplexer.repeatSection(sample::TOT_PID, SECOND, 2, [](unsigned slot) { return sample::tot(slot / SECOND); });

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
