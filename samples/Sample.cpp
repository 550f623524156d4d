#include "Sample.h"

#include "ApplicationFiles.h"
#include "Multiplexer.h"
#include "Station.h"
#include "Tables.h"

namespace sample {

namespace {

constexpr unsigned SLOTS_PER_SECOND = 240;
constexpr unsigned SLOTS = 2 * SLOTS_PER_SECOND;
constexpr unsigned BIT_RATE = SLOTS_PER_SECOND * TS_SIZE * 8;

/// The time that a packet takes.
constexpr Ticks SLOT = SECOND / SLOTS_PER_SECOND;

/// Sends a table as it is, again and again.
void repeat(Multiplexer& multiplexer, std::uint16_t pid, Ticks period, Ticks first, const Bytes& section) {
    multiplexer.repeatSection(pid, period, first, [section](Ticks) { return section; });
}

/// The more a receiver waits for a table, the more often it comes.
void addTables(Multiplexer& multiplexer) {
    repeat(multiplexer, PAT_PID, SECOND / 10, 1 * SLOT, pat());
    repeat(multiplexer, HD_PMT_PID, SECOND / 10, 8 * SLOT, hdPmt());
    repeat(multiplexer, ONE_SEG_PMT_PID, SECOND / 5, 11 * SLOT, oneSegPmt());
    repeat(multiplexer, NIT_PID, SECOND, 14 * SLOT, nit());
    repeat(multiplexer, SDT_PID, SECOND, 20 * SLOT, sdt());
    repeat(multiplexer, AIT_PID, SECOND / 2, 26 * SLOT, nclAit());
    repeat(multiplexer, AIT_PID, SECOND / 2, 32 * SLOT, javaAit());
    repeat(multiplexer, EVENTS_PID, SECOND / 4, 39 * SLOT, streamEvents());
    repeat(multiplexer, SDTT_PID, 2 * SECOND, 44 * SLOT, sdtt());
    multiplexer.repeatSection(TOT_PID, SECOND, 2 * SLOT, [](Ticks now) { return tot(secondOfDay(now)); });
}

} // namespace

/// Periods and first slots spread the load.
Bytes shortSample() {
    Multiplexer multiplexer(BIT_RATE);
    multiplexer.repeatClock(HD_PCR_PID, SECOND / 20, 0);
    multiplexer.repeatClock(ONE_SEG_PCR_PID, SECOND / 20, 4 * SLOT);
    addTables(multiplexer);
    multiplexer.repeatFiller(HD_VIDEO_PID, SECOND / 40, 3 * SLOT, VIDEO_STREAM);
    multiplexer.repeatFiller(HD_AUDIO_PID, SECOND / 20, 5 * SLOT, AUDIO_STREAM);
    multiplexer.repeatFiller(ONE_SEG_VIDEO_PID, SECOND / 20, 6 * SLOT, VIDEO_STREAM);
    multiplexer.repeatFiller(ONE_SEG_AUDIO_PID, SECOND / 10, 7 * SLOT, AUDIO_STREAM);
    multiplexer.repeatCarousel(CAROUSEL_PID, {applicationPlan(), applicationFiles()}, SECOND / 2, 13 * SECOND / 20,
                               9 * SLOT);
    Bytes stream;
    for (unsigned slot = 0; slot < SLOTS; ++slot) {
        const Packet packet = multiplexer.next();
        stream.insert(stream.end(), packet.begin(), packet.end());
    }
    return stream;
}

} // namespace sample
