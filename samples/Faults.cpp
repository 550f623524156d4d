#include "Effects.h"
#include "Station.h"
#include "Tables.h"

#include <algorithm>
#include <bitstream/mpeg/pes.h>
#include <optional>
#include <stdexcept>

namespace sample {

namespace {

/// How long what comes again and again goes wrong, and how long a table stops: no limit is longer.
constexpr unsigned SOME_SECONDS = 20;
constexpr unsigned LONGEST_SECONDS = 60;

constexpr unsigned HOUR = 3600;
constexpr unsigned PAUSE = 30;

/// Where a clock begins again.
constexpr Ticks CLOCK_END = (Ticks{1} << 33U) * 300;

constexpr std::uint16_t NULL_PID = 0x1FFF;
constexpr std::uint16_t UNANNOUNCED_PID = 0x0300;
constexpr std::uint8_t FOREIGN_TABLE_ID = 0x80;
constexpr std::uint16_t OTHER_NETWORK_ID = 0x0736;

/// An effect on one of so many packets of a PID, on the way.
template <class Change> auto onTheWay(std::uint16_t pid, unsigned number, Change change) {
    return [pid, change, due = every(number)](const Moment& /*moment*/, Bytes& sent) mutable {
        if (ts_get_pid(sent.data()) == pid && due()) {
            change(sent);
        }
    };
}

Fault tableStops(const std::string& table, const std::string& name, const std::string& indicator, std::uint16_t pid) {
    Fault fault{name + "-stops", indicator, "no " + table + " comes", Reported::Yes, LONGEST_SECONDS};
    fault.section = stop(pid);
    return fault;
}

Fault tableDamaged(const std::string& table, const std::string& name, std::uint16_t pid) {
    Fault fault{name + "-crc", "2.2 CRC_error", "the CRC_32 of every third " + table + " is wrong", Reported::Yes,
                SOME_SECONDS};
    fault.section = damage(pid, 3);
    return fault;
}

std::vector<Fault> tablesThatStop() {
    return {
        tableStops("PAT", "pat", "1.3.a PAT_error_2", PAT_PID),
        tableStops("PMT of the service for the living room", "pmt", "1.5.a PMT_error_2", HD_PMT_PID),
        tableStops("PMT of the service for the phone", "one-seg-pmt", "1.5.a PMT_error_2", ONE_SEG_PMT_PID),
        tableStops("NIT", "nit", "3.1.a NIT_actual_error", NIT_PID),
        tableStops("SDT", "sdt", "3.5.a SDT_actual_error", SDT_PID),
        tableStops("EIT", "eit", "3.6.a EIT_actual_error", EIT_PID),
        tableStops("TOT", "tot", "3.8 TDT_error", TOT_PID),
        tableStops("BIT", "bit", "3.2 SI_repetition_error", BIT_PID),
        tableStops("AIT", "ait", "", AIT_PID),
    };
}

std::vector<Fault> damagedTables() {
    return {
        tableDamaged("PAT", "pat", PAT_PID), tableDamaged("PMT", "pmt", HD_PMT_PID),
        tableDamaged("NIT", "nit", NIT_PID), tableDamaged("SDT", "sdt", SDT_PID),
        tableDamaged("TOT", "tot", TOT_PID), tableDamaged("AIT", "ait", AIT_PID),
    };
}

/// All that counts time in a packet, so much later.
void shift(Packet& packet, Ticks by) {
    if (isClock(packet)) {
        setClock(packet, (clockOf(packet) + by) % CLOCK_END);
    } else if (std::uint8_t* const pes = timedPes(packet)) {
        pes_set_pts(pes, pes_get_pts(pes) + by / 300);
    }
}

bool isOfLivingRoom(const Packet& packet) {
    const std::uint16_t pid = ts_get_pid(packet.data());
    return pid == HD_PCR_PID || pid == HD_VIDEO_PID || pid == HD_AUDIO_PID || pid == HD_CAPTIONS_PID;
}

auto jump(Ticks by) {
    return [by](const Moment&, Packet& packet) {
        if (isOfLivingRoom(packet)) {
            shift(packet, by);
        }
    };
}

/// Announced where the new clock begins, and no time stamp of the new one before it.
auto announcedJump(Ticks by) {
    return [by, begun = false](const Moment&, Packet& packet) mutable {
        if (!isOfLivingRoom(packet)) {
            return;
        }
        if (!begun && isClock(packet)) {
            begun = true;
            tsaf_set_discontinuity(packet.data());
        }
        if (begun) {
            shift(packet, by);
        }
    };
}

auto freeze() {
    return packets(HD_PCR_PID, [clock = std::optional<Ticks>()](const Moment&, Packet& packet) mutable {
        clock = clock.value_or(clockOf(packet));
        setClock(packet, *clock);
    });
}

Fault wrap() {
    Fault fault = inPackets({"pcr-wrap", "2.3.b PCR_discontinuity_indicator_error",
                             "the clocks reach their end, and begin again with 0", Reported::No},
                            [](const Moment& moment, Packet& packet) {
                                shift(packet, CLOCK_END - Multiplexer::CLOCK_AT_START - moment.begin);
                            });
    fault.sinceStart = true;
    return fault;
}

std::vector<Fault> clockFaults() {
    const std::string jumps = "2.3.b PCR_discontinuity_indicator_error";
    const std::string repetition = "2.3.a PCR_repetition_error";
    return {
        inPackets({"pcr-forward", jumps, "PCR and PTS of a service jump 10 s forward"}, jump(10 * SECOND)),
        inPackets({"pcr-back", jumps, "PCR and PTS of a service jump 10 s back"}, jump(CLOCK_END - 10 * SECOND)),
        inPackets({"pcr-splice", jumps, "the same forward, with discontinuity_indicator", Reported::No},
                  announcedJump(10 * SECOND)),
        inPackets({"pcr-frozen", "", "the PCR of a service stays the same", Reported::Yes, SOME_SECONDS}, freeze()),
        inPackets({"pcr-stops", repetition, "a service has no PCR", Reported::Yes, SOME_SECONDS}, silence(HD_PCR_PID)),
        inPackets({"pcr-slow", repetition, "the PCR of a service comes each 200 ms", Reported::Yes, SOME_SECONDS},
                  packets(HD_PCR_PID,
                          [due = every(5)](const Moment&, Packet& packet) mutable {
                              if (!due()) {
                                  packet = nullPacket();
                              }
                          })),
        wrap(),
        inPackets({"pts-stops", "2.5 PTS_error", "video without PTS", Reported::Yes, SOME_SECONDS},
                  packets(HD_VIDEO_PID,
                          [](const Moment&, Packet& packet) {
                              if (std::uint8_t* const pes = timedPes(packet)) {
                                  pes_set_headerlength(pes, PES_HEADER_SIZE_PTS - PES_HEADER_SIZE_NOPTS);
                              }
                          })),
    };
}

void append(Bytes& sent, std::size_t times) {
    const Bytes packet = sent;
    for (std::size_t count = 0; count < times; ++count) {
        sent.insert(sent.end(), packet.begin(), packet.end());
    }
}

void flipContinuity(Bytes& sent) {
    sent[3] ^= 0x08U;
}

std::vector<Fault> countFaults() {
    const std::string indicator = "1.4 Continuity_count_error";
    const auto fault = [&indicator](const char* name, const char* help, Reported reported = Reported::Yes) {
        return Fault{name, indicator, help, reported, SOME_SECONDS};
    };
    Fault loss{"loss", indicator, "all packets of 3 s are lost, and the PCR shows it", Reported::Yes, 3};
    return {
        inWhatIsSent(fault("continuity-pmt", "every 20th packet of a PMT has a wrong counter"),
                     onTheWay(HD_PMT_PID, 20, flipContinuity)),
        inWhatIsSent(fault("continuity-video", "every 50th packet of video has a wrong counter"),
                     onTheWay(HD_VIDEO_PID, 50, flipContinuity)),
        inWhatIsSent(fault("video-replaced", "every 100th packet of video is a null packet instead"),
                     onTheWay(HD_VIDEO_PID, 100,
                              [](Bytes& sent) {
                                  const Packet null = nullPacket();
                                  sent.assign(null.begin(), null.end());
                              })),
        inWhatIsSent(fault("video-lost", "every third packet of video is lost"),
                     onTheWay(HD_VIDEO_PID, 3, [](Bytes& sent) { sent.clear(); })),
        inWhatIsSent(fault("sent-twice", "every 50th packet of video comes twice", Reported::No),
                     onTheWay(HD_VIDEO_PID, 50, [](Bytes& sent) { append(sent, 1); })),
        inWhatIsSent(fault("sent-thrice", "every 50th packet of video comes three times"),
                     onTheWay(HD_VIDEO_PID, 50, [](Bytes& sent) { append(sent, 2); })),
        inWhatIsSent(std::move(loss), [](const Moment&, Bytes& sent) { sent.clear(); }),
    };
}

std::vector<Fault> packetFaults() {
    return {
        inWhatIsSent({"sync-lost", "1.1 TS_sync_loss", "1000 bytes more between two packets"},
                     [done = false](const Moment&, Bytes& sent) mutable {
                         if (!done) {
                             sent.insert(sent.begin(), 1000, 0x00);
                             done = true;
                         }
                     }),
        inWhatIsSent({"sync-byte", "1.2 Sync_byte_error", "every 100th packet has a wrong sync byte", Reported::Yes,
                      SOME_SECONDS},
                     [due = every(100)](const Moment&, Bytes& sent) mutable {
                         if (due()) {
                             sent.front() = 0xB8;
                         }
                     }),
        inPackets(
            {"pat-scrambled", "1.3.a PAT_error_2", "the packets of the PAT are scrambled", Reported::Yes, SOME_SECONDS},
            scramble(PAT_PID)),
        inPackets({"pid-stops", "1.6 PID_error", "announced audio does not come", Reported::Yes, LONGEST_SECONDS},
                  silence(HD_AUDIO_PID)),
        inWhatIsSent({"transport-error", "2.1 Transport_error", "every 50th packet of video is damaged, and says so",
                      Reported::Yes, SOME_SECONDS},
                     onTheWay(HD_VIDEO_PID, 50, [](Bytes& sent) { ts_set_transporterror(sent.data()); })),
        inPackets({"scrambled", "2.6 CAT_error", "video is scrambled, without a CAT", Reported::Yes, LONGEST_SECONDS},
                  scramble(HD_VIDEO_PID)),
        inPackets({"pid-unannounced", "3.4.a Unreferenced_PID", "a PID comes that no table names", Reported::Yes,
                   SOME_SECONDS},
                  packets(NULL_PID,
                          [due = every(10)](const Moment&, Packet& packet) mutable {
                              if (due()) {
                                  ts_set_pid(packet.data(), UNANNOUNCED_PID);
                              }
                          })),
    };
}

/// One capital letter of a name becomes a small one.
void rename(Bytes& section) {
    constexpr std::string_view PART = "HD";
    *std::search(section.begin(), section.end(), PART.begin(), PART.end()) = 'h';
}

/// What it is about becomes another one.
void rate(Bytes& section) {
    constexpr std::string_view COUNTRY = "BRA";
    ++*(std::search(section.begin(), section.end(), COUNTRY.begin(), COUNTRY.end()) + COUNTRY.size());
}

std::vector<Fault> contentFaults() {
    return {
        inSections({"pat-other-table", "1.3.a PAT_error_2", "every fifth section on the PAT's PID is none of a PAT",
                    Reported::Yes, SOME_SECONDS},
                   sections(PAT_PID,
                            [due = every(5)](const Moment&, Bytes& section) mutable {
                                if (due()) {
                                    psi_set_tableid(section.data(), FOREIGN_TABLE_ID);
                                }
                            })),
        inSections({"bit-not-kept", "3.2 SI_repetition_error",
                    "the BIT declares a NIT each second, which comes each 5 s", Reported::Yes, LONGEST_SECONDS},
                   sections(NIT_PID,
                            [due = every(5)](const Moment&, Bytes& section) mutable {
                                if (!due()) {
                                    section.clear();
                                }
                            })),
        inSections(
            {"eit-following-missing", "3.6.c EIT_PF_error", "the EIT has no section 1", Reported::Yes, SOME_SECONDS},
            sections(EIT_PID,
                     [](const Moment&, Bytes& section) {
                         if (psi_get_section(section.data()) == 1) {
                             section.clear();
                         }
                     })),
        inSections({"tot-back", "", "the TOT runs back an hour", Reported::Yes, SOME_SECONDS},
                   sections(TOT_PID, [](const Moment& moment,
                                        Bytes& section) { section = tot(secondOfDay(moment.now) - HOUR); })),
        inSections({"version-flaps", "", "every other PMT has another version", Reported::Yes, SOME_SECONDS},
                   flap(HD_PMT_PID)),
        inSections({"content-changes", "", "the SDT has another name in the same version", Reported::Yes, SOME_SECONDS},
                   sections(SDT_PID, [](const Moment&, Bytes& section) { rename(section); })),
        inSections(
            {"pmt-changes", "", "a PMT has another parental rating in the same version", Reported::Yes, SOME_SECONDS},
            sections(HD_PMT_PID, [](const Moment&, Bytes& section) { rate(section); })),
        inSections(
            {"network-differs", "", "the SDT names another original network than the NIT", Reported::Yes, SOME_SECONDS},
            sections(SDT_PID,
                     [](const Moment&, Bytes& section) {
                         setVersion(section, 1);
                         section[8] = OTHER_NETWORK_ID >> 8U;
                         section[9] = OTHER_NETWORK_ID & 0xFFU;
                     })),
    };
}

/// All of another chain of transmission: clocks, counters and versions.
Fault otherSource() {
    Fault fault{"other-source", "", "the same station from another source: other PCR, counters and versions"};
    fault.section = [](const Moment&, std::uint16_t /*pid*/, Bytes& section) {
        if (psi_get_syntax(section.data())) {
            setVersion(section, (psi_get_version(section.data()) + 1U) & 0x1FU);
            psi_set_crc(section.data());
        }
    };
    fault.packet = [](const Moment&, Packet& packet) { shift(packet, 4321 * SECOND); };
    fault.sent = [](const Moment&, Bytes& sent) {
        if (ts_get_pid(sent.data()) != NULL_PID) {
            ts_set_cc(sent.data(), (ts_get_cc(sent.data()) + 5U) & 0x0FU);
        }
    };
    return fault;
}

/// Keeps what was sent until it begins again.
Fault loop() {
    Fault fault = inWhatIsSent({"loop", "", "the stream begins again"},
                               [file = Bytes(), at = std::size_t{0}](const Moment& moment, Bytes& sent) mutable {
                                   if (moment.now < moment.begin) {
                                       file.insert(file.end(), sent.begin(), sent.end());
                                       return;
                                   }
                                   const auto from = file.begin() + static_cast<std::ptrdiff_t>(at);
                                   const std::size_t size = std::min<std::size_t>(TS_SIZE, file.size() - at);
                                   sent.assign(from, from + static_cast<std::ptrdiff_t>(size));
                                   at = at + size == file.size() ? 0 : at + size;
                               });
    fault.sinceStart = true;
    return fault;
}

/// Nothing is sent meanwhile, nothing is lost: what follows shows it by the time of day alone.
Fault pause() {
    return inSections({"pause", "", "the sender pauses for 30 s, its PCR with it", Reported::Live},
                      sections(TOT_PID, [](const Moment& moment, Bytes& section) {
                          section = tot(secondOfDay(moment.now) + PAUSE);
                      }));
}

std::vector<Fault> allFaults() {
    std::vector<Fault> all;
    for (std::vector<Fault> each : {packetFaults(),
                                    countFaults(),
                                    tablesThatStop(),
                                    damagedTables(),
                                    clockFaults(),
                                    contentFaults(),
                                    {loop(), otherSource(), pause()},
                                    applicationFaults()}) {
        std::move(each.begin(), each.end(), std::back_inserter(all));
    }
    return all;
}

} // namespace

const std::vector<Fault>& faults() {
    static const std::vector<Fault> all = allFaults();
    return all;
}

const Fault& faultNamed(const std::string& name) {
    const auto found =
        std::find_if(faults().begin(), faults().end(), [&name](const Fault& each) { return each.name == name; });
    if (found == faults().end()) {
        throw std::invalid_argument("there is no fault " + name);
    }
    return *found;
}

} // namespace sample
