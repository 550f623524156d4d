#include "watching/Announcements.h"

#include "sections/Bits.h"

#include <algorithm>
#include <bitstream/mpeg/psi.h>
#include <utility>

namespace inspect {

namespace {

/// No multiplex comes near; a broken stream must not fill the memory.
constexpr std::size_t MOST_PROGRAMS = 1024;

constexpr std::uint8_t CAT = 0x01;

Pid takePid(Bits& bits) {
    bits.take(3);
    return static_cast<Pid>(bits.take(13));
}

/// Descriptors of a loop whose length stands before them.
std::vector<std::uint8_t> takeLoop(Bits& bits) {
    bits.take(4);
    return bits.takeBytes(bits.take32(12));
}

/// Calls back with each descriptor: its tag, its bytes.
template <class Take> void forEachDescriptor(const std::vector<std::uint8_t>& loop, Take take) {
    Bits bits(loop.data(), loop.size());
    while (bits.left() >= 2) {
        const auto tag = static_cast<std::uint8_t>(bits.take(8));
        const std::vector<std::uint8_t> body = bits.takeBytes(bits.take32(8));
        take(tag, body);
    }
}

/// PIDs on which a receiver finds what it needs to descramble.
void addKeys(std::vector<Pid>& keys, const std::vector<std::uint8_t>& loop) {
    forEachDescriptor(loop, [&keys](std::uint8_t tag, const std::vector<std::uint8_t>& body) {
        constexpr std::uint8_t CONDITIONAL_ACCESS = 0x09;
        constexpr std::uint8_t ACCESS_CONTROL = 0xF6;
        if ((tag == CONDITIONAL_ACCESS || tag == ACCESS_CONTROL) && body.size() >= 4) {
            keys.push_back(static_cast<Pid>((body[2] & 0x1FU) << 8U | body[3]));
        }
    });
}

bool isVideoOrAudio(std::uint64_t streamType) {
    constexpr std::uint8_t TYPES[] = {0x01, 0x02, 0x03, 0x04, 0x0F, 0x10, 0x11, 0x1B, 0x1C, 0x24};
    return std::find(std::begin(TYPES), std::end(TYPES), streamType) != std::end(TYPES);
}

/// Whether a descriptor says that video is made of still pictures.
bool isOfStill(const std::vector<std::uint8_t>& loop) {
    bool isStill = false;
    forEachDescriptor(loop, [&isStill](std::uint8_t tag, const std::vector<std::uint8_t>& body) {
        constexpr std::uint8_t VIDEO_STREAM = 0x02;
        constexpr std::uint8_t AVC_VIDEO = 0x28;
        constexpr std::uint8_t VIDEO_DECODE_CONTROL = 0xC8;
        isStill = isStill || (tag == VIDEO_DECODE_CONTROL && !body.empty() && (body[0] & 0x80U) != 0) ||
                  (tag == VIDEO_STREAM && !body.empty() && (body[0] & 0x01U) != 0) ||
                  (tag == AVC_VIDEO && body.size() >= 4 && (body[3] & 0x80U) != 0);
    });
    return isStill;
}

Announcements::ProgramMap mapIn(const Section& section) {
    Bits bits = section.body();
    Announcements::ProgramMap map{takePid(bits), {}, {}};
    addKeys(map.keys, takeLoop(bits));
    while (bits.left() >= 5) {
        const std::uint64_t type = bits.take(8);
        const Pid pid = takePid(bits);
        const std::vector<std::uint8_t> loop = takeLoop(bits);
        map.components.push_back({pid, isVideoOrAudio(type), isOfStill(loop)});
        addKeys(map.keys, loop);
    }
    return map;
}

} // namespace

bool Announcements::learn(const Section& section) {
    const std::optional<LongHeader> header = section.longHeader();
    if (!section.sound() || !header || !header->current || section.size() < PSI_HEADER_SIZE_SYNTAX1 + PSI_CRC_SIZE) {
        return false;
    }
    switch (section.tableId()) {
    case PAT:
        return section.pid() == 0x0000 && learnPrograms(section, *header);
    case PMT:
        return learnMap(section, *header);
    case SDT:
        return learnServices(section);
    case CAT: {
        Bits bits = section.body();
        std::vector<Pid> managers;
        addKeys(managers, bits.takeAll());
        m_managers = {managers.begin(), managers.end()};
        m_knowsKeys = true;
        combine();
        return false;
    }
    default:
        return false;
    }
}

bool Announcements::learnPrograms(const Section& section, const LongHeader& header) {
    std::vector<Program> programs;
    Bits bits = section.body();
    while (bits.left() >= 4 && programs.size() < MOST_PROGRAMS) {
        const auto number = static_cast<std::uint16_t>(bits.take(16));
        programs.push_back({number, takePid(bits)});
    }
    const Place place = Place::of(section.pid(), PAT, header).inTheOnlyPat();
    m_ofPat[place] = std::move(programs);
    const auto [beyond, end] = behind(m_ofPat, Place{place.table, header.lastSectionNumber});
    m_ofPat.erase(beyond, end);
    const std::set<Program> before = m_programs;
    combine();
    return m_programs != before;
}

bool Announcements::learnMap(const Section& section, const LongHeader& header) {
    const auto program = m_programs.find({header.extension, section.pid().value_or(0)});
    if (program == m_programs.end()) {
        return false;
    }
    ProgramMap map = mapIn(section);
    const auto known = m_maps.find(*program);
    if (known != m_maps.end() && known->second == map) {
        return false;
    }
    m_maps[*program] = std::move(map);
    combine();
    return true;
}

bool Announcements::learnServices(const Section& section) {
    constexpr std::uint8_t SERVICE = 0x48;
    constexpr std::uint8_t ENGINEERING = 0xA4;
    const std::size_t before = m_engineering.size();
    Bits bits = section.body();
    bits.take(24); // original_network_id
    while (bits.left() >= 5) {
        const auto service = static_cast<std::uint16_t>(bits.take(16));
        bits.take(8);
        forEachDescriptor(takeLoop(bits), [&](std::uint8_t tag, const std::vector<std::uint8_t>& body) {
            if (tag == SERVICE && !body.empty() && body[0] == ENGINEERING && m_engineering.size() < MOST_PROGRAMS) {
                m_engineering.insert(service);
            }
        });
    }
    return !std::exchange(m_knowsServices, true) || m_engineering.size() != before;
}

/// Puts together what all tables name.
void Announcements::combine() {
    m_programs.clear();
    m_mapPids.reset();
    m_named.reset();
    m_videoAndAudio.reset();
    m_still.reset();
    for (const auto& [place, programs] : m_ofPat) {
        for (const Program& program : programs) {
            m_named.set(program.pid);
            if (program.number != 0 && m_programs.size() < MOST_PROGRAMS) {
                m_programs.insert(program);
                m_mapPids.set(program.pid);
            }
        }
    }
    for (auto map = m_maps.begin(); map != m_maps.end();) {
        map = m_programs.count(map->first) == 0 ? m_maps.erase(map) : std::next(map);
    }
    for (const auto& [program, map] : m_maps) {
        m_named.set(map.clock);
        for (const Component& component : map.components) {
            m_named.set(component.pid);
            m_videoAndAudio[component.pid] = m_videoAndAudio[component.pid] || component.isVideoOrAudio;
            m_still[component.pid] = m_still[component.pid] || component.isStill;
        }
        for (const Pid pid : map.keys) {
            m_named.set(pid);
        }
    }
    for (const Pid pid : m_managers) {
        m_named.set(pid);
    }
}

namespace {

/// The number that BCD digits stand for; nothing when they are none, or 0: a cycle that is not given.
std::optional<double> cycleOf(std::uint64_t digits) {
    std::uint64_t number = 0;
    std::uint64_t weight = 1;
    for (; digits != 0; digits >>= 4U, weight *= 10) {
        if ((digits & 0xFU) > 9) {
            return std::nullopt;
        }
        number += (digits & 0xFU) * weight;
    }
    return number == 0 ? std::nullopt : std::optional(static_cast<double>(number));
}

/// Checks of tables whose cycle is one number of as many digits as there are.
std::string_view checkOf(std::uint8_t tableId) {
    switch (tableId) {
    case 0x40:
        return "nit_interval";
    case 0x42:
        return "sdt_interval";
    case 0x46:
        return "sdt_other_interval";
    case 0xC3:
        return "sdtt_interval";
    case 0xC4:
        return "bit_interval";
    case 0xC8:
        return "cdt_interval";
    default:
        return {};
    }
}

/// Of a table that is declared twice, by broadcasters or for more of its events, the longer cycle is that of all.
void declare(std::map<std::string_view, double>& cycles, std::string_view check, std::optional<double> cycle) {
    if (!check.empty() && cycle) {
        double& known = cycles[check];
        known = std::max(known, *cycle);
    }
}

/// One of the schedule has a row for each kind of media: its first cycle is that of the days that are far away.
void declareSchedule(std::map<std::string_view, double>& cycles, std::string_view check, Bits bits) {
    while (bits.left() >= 4) {
        bits.take(16); // media_type, pattern, days
        declare(cycles, check, cycleOf(bits.take(12)));
        bits.take(2);
        bits.takeBytes(std::size_t{2} * bits.take32(2)); // nearer segments
    }
}

void declareTable(std::map<std::string_view, double>& cycles, std::uint8_t tableId,
                  const std::vector<std::uint8_t>& description) {
    Bits bits(description.data(), description.size());
    if (tableId == 0x4E && description.size() == 4) {
        for (const std::string_view check : {"eit_interval", "eit_mobile_interval", "eit_one_seg_interval"}) {
            declare(cycles, check, cycleOf(bits.take(8)));
        }
    } else if (tableId == 0x50 || tableId == 0x58) {
        declareSchedule(cycles, tableId == 0x50 ? "eit_schedule_interval" : "eit_schedule_extended_interval", bits);
    } else if (!description.empty() && description.size() <= 2) {
        declare(cycles, checkOf(tableId), cycleOf(bits.take(8 * static_cast<unsigned>(description.size()))));
    }
}

} // namespace

std::map<std::string_view, double> cyclesIn(const Section& bit) {
    std::map<std::string_view, double> cycles;
    const auto takeParameters = [&cycles](std::uint8_t tag, const std::vector<std::uint8_t>& body) {
        constexpr std::uint8_t SI_PARAMETER = 0xD7;
        if (tag != SI_PARAMETER) {
            return;
        }
        Bits bits(body.data(), body.size());
        bits.take(24); // parameter_version, update_time
        while (bits.left() >= 2) {
            const auto tableId = static_cast<std::uint8_t>(bits.take(8));
            declareTable(cycles, tableId, bits.takeBytes(bits.take32(8)));
        }
    };
    Bits bits = bit.body();
    forEachDescriptor(takeLoop(bits), takeParameters);
    while (bits.left() >= 3) {
        bits.take(8); // broadcaster_id
        forEachDescriptor(takeLoop(bits), takeParameters);
    }
    return cycles;
}

} // namespace inspect
