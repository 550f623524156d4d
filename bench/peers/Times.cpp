#include "Peer.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

// Times how long this library and others take to decode the same four sections and to destroy what came of them, in
// rounds in which each has its turn. What they decoded is read out and compared beforehand.

namespace {

using Clock = std::chrono::steady_clock;
using Nanoseconds = std::chrono::duration<double, std::nano>;

/// Long against a call of the clock, short against the time until another process gets its turn.
constexpr Nanoseconds BATCH = std::chrono::microseconds(100);
constexpr double DEFAULT_SECONDS = 10;

constexpr std::array KIND_NAMES{
    "network name",      "service list",  "service",         "linkage",        "component",
    "stream identifier", "CA identifier", "parental rating", "TS information", "terrestrial delivery system",
    "partial reception"};
static_assert(KIND_NAMES.size() == static_cast<std::size_t>(Kind::COUNT));

/// One library with the section of one table.
struct Contest {
    Decoder decoder;
    std::array<Readout, std::tuple_size<Versions>::value> readouts;
    bool accepted = true;
    std::size_t batch = 1;
    std::vector<double> samples;
    double nanoseconds = 0;
};

struct Contestant {
    std::string name;
    std::array<Contest, TABLES.size()> contests;
    bool asDocumented = true;
    bool checksCrc32 = true;
};

Nanoseconds timeBatch(Contest& contest) {
    const auto begin = Clock::now();
    for (std::size_t i = 0; i < contest.batch; ++i) {
        contest.accepted &= contest.decoder.decode();
    }
    return Clock::now() - begin;
}

/// A single batch may have been interrupted, and be longer for that.
Nanoseconds shortestBatch(Contest& contest) {
    Nanoseconds shortest = timeBatch(contest);
    for (int i = 1; i < 5; ++i) {
        shortest = std::min(shortest, timeBatch(contest));
    }
    return shortest;
}

Contestant prepare(const Candidate& candidate) {
    Contestant contestant;
    contestant.name = candidate.name;
    contestant.asDocumented = candidate.asDocumented;
    const Peer peer = candidate.make();
    for (std::size_t table = 0; table < TABLES.size(); ++table) {
        const Versions sections = fourServices(TABLES[table]);
        Contest& contest = contestant.contests[table];
        contest.decoder = peer[table](sections);
        std::generate(contest.readouts.begin(), contest.readouts.end(), contest.decoder.readOut);
        contestant.checksCrc32 = contestant.checksCrc32 && !peer[table](damaged(sections)).decode();
        while (shortestBatch(contest) < BATCH) {
            contest.batch *= 2;
        }
    }
    return contestant;
}

/// Whether a library found in each version what another did, and the same descriptors in all of them.
bool agree(const Contest& one, const Contest& other) {
    for (std::size_t version = 0; version < one.readouts.size(); ++version) {
        const Readout& ours = one.readouts[version];
        const Readout& theirs = other.readouts[version];
        if (ours.entries == 0 || ours.entries != theirs.entries || ours.table != theirs.table ||
            theirs.kinds != other.readouts.front().kinds) {
            return false;
        }
    }
    return true;
}

/// Whether all libraries found the same entries with the same fields, and refused no section while they were timed.
bool allDecoded(const std::vector<Contestant>& contestants) {
    bool decoded = true;
    const Contestant& first = contestants.front();
    for (const Contestant& contestant : contestants) {
        for (std::size_t table = 0; table < TABLES.size(); ++table) {
            if (!agree(first.contests[table], contestant.contests[table])) {
                std::fprintf(stderr, "%s and %s read different things out of the %s\n", first.name.c_str(),
                             contestant.name.c_str(), TABLE_NAMES[table]);
                decoded = false;
            }
            if (!contestant.contests[table].accepted) {
                std::fprintf(stderr, "%s refused the %s\n", contestant.name.c_str(), TABLE_NAMES[table]);
                decoded = false;
            }
        }
    }
    return decoded;
}

void run(std::vector<Contestant>& contestants, Nanoseconds duration) {
    const auto end = Clock::now() + duration;
    do {
        for (std::size_t table = 0; table < TABLES.size(); ++table) {
            for (Contestant& contestant : contestants) {
                Contest& contest = contestant.contests[table];
                contest.samples.push_back(timeBatch(contest).count() / static_cast<double>(contest.batch));
            }
        }
    } while (Clock::now() < end);

    for (Contestant& contestant : contestants) {
        for (Contest& contest : contestant.contests) {
            const auto middle = contest.samples.begin() + static_cast<std::ptrdiff_t>(contest.samples.size() / 2);
            std::nth_element(contest.samples.begin(), middle, contest.samples.end());
            contest.nanoseconds = *middle;
        }
    }
}

const Contestant* find(const std::vector<Contestant>& contestants, const std::string& name) {
    const auto found = std::find_if(contestants.begin(), contestants.end(),
                                    [&name](const Contestant& contestant) { return contestant.name == name; });
    return found == contestants.end() ? nullptr : &*found;
}

void printTable(const std::vector<Contestant>& contestants) {
    std::printf("%-*s", NAME_WIDTH, "");
    for (const char* const table : TABLE_NAMES) {
        std::printf(" %6s", table);
    }
    std::printf("\n%-*s", NAME_WIDTH, "bytes");
    for (const Table table : TABLES) {
        std::printf(" %6zu", fourServices(table).front().size());
    }
    std::printf("\n%-*s", NAME_WIDTH, "entries");
    for (const Contest& contest : contestants.front().contests) {
        std::printf(" %6u", contest.readouts.front().entries);
    }
    std::printf("\n\n%-*s %27s   %-7s   %s\n", NAME_WIDTH, "", "ns per section", "CRC_32", "descriptors decoded");
    for (const Candidate& candidate : CANDIDATES) {
        std::printf("%-*s", NAME_WIDTH, candidate.name);
        const Contestant* const contestant = find(contestants, candidate.name);
        if (contestant == nullptr) {
            std::printf("  not installed\n");
            continue;
        }
        const auto& [pat, pmt, sdt, nit] = contestant->contests; // a PAT has no descriptors
        std::printf(" %6.0f %6.0f %6.0f %6.0f   %s   %u + %u + %u\n", pat.nanoseconds, pmt.nanoseconds, sdt.nanoseconds,
                    nit.nanoseconds, contestant->checksCrc32 ? "checked" : "ignored", pmt.readouts.front().descriptors,
                    sdt.readouts.front().descriptors, nit.readouts.front().descriptors);
    }
}

void printKinds(const Contestant& contestant, const char* what, const std::set<std::string>& kinds) {
    std::string names;
    for (const std::string& kind : kinds) {
        names += (names.empty() ? "" : ", ") + kind;
    }
    if (!names.empty()) {
        std::printf("%s %s: %s\n", contestant.name.c_str(), what, names.c_str());
    }
}

/// Of which kinds of descriptors a library gives no fields, and of which other values than this library.
void printDifferences(const Contestant& contestant, const Contestant& ours) {
    std::set<std::string> undecoded;
    std::set<std::string> different;
    for (std::size_t kind = 0; kind < KIND_NAMES.size(); ++kind) {
        for (std::size_t table = 0; table < TABLES.size(); ++table) {
            const QUOR_U32 theirs = contestant.contests[table].readouts.front().kinds[kind];
            if (theirs != ours.contests[table].readouts.front().kinds[kind]) {
                (theirs == 0 ? undecoded : different).insert(KIND_NAMES[kind]);
            }
        }
    }
    printKinds(contestant, "does not decode", undecoded);
    printKinds(contestant, "reads other values out of", different);
}

const Contestant* fastestOther(const std::vector<Contestant>& contestants, std::size_t table, bool asDocumented) {
    const Contestant* fastest = nullptr;
    for (const Contestant& other : contestants) {
        if (other.name != OURS && other.name != OURS_AFTER_CRC_32 && other.checksCrc32 &&
            (other.asDocumented || !asDocumented) &&
            (fastest == nullptr || other.contests[table].nanoseconds < fastest->contests[table].nanoseconds)) {
            fastest = &other;
        }
    }
    return fastest;
}

void printRatios(const std::vector<Contestant>& contestants, const char* others, bool asDocumented) {
    const Contestant& ours = *find(contestants, OURS_AFTER_CRC_32);
    std::printf("%-*s", NAME_WIDTH, others);
    std::set<std::string> fastestNames;
    std::string fastestByTable;
    for (std::size_t table = 0; table < TABLES.size(); ++table) {
        const Contestant* const fastest = fastestOther(contestants, table, asDocumented);
        if (fastest == nullptr) {
            std::printf("  none installed\n");
            return;
        }
        std::printf(" %6.2f", ours.contests[table].nanoseconds / fastest->contests[table].nanoseconds);
        fastestNames.insert(fastest->name);
        fastestByTable += std::string(table == 0 ? "" : "; ") + TABLE_NAMES[table] + ": " + fastest->name;
    }
    std::printf("   %s\n", (fastestNames.size() == 1 ? *fastestNames.begin() : fastestByTable).c_str());
}

} // namespace

int main(int argc, char** argv) {
    const double seconds = argc > 1 ? std::strtod(argv[1], nullptr) : DEFAULT_SECONDS;
    if (argc > 2 || !(seconds > 0)) {
        std::fprintf(stderr, "usage: %s [SECONDS]\n", argv[0]);
        return 2;
    }
    std::vector<Contestant> contestants;
    for (const Candidate& candidate : CANDIDATES) {
        if (candidate.make != nullptr) {
            contestants.push_back(prepare(candidate));
        }
    }
    run(contestants, std::chrono::duration<double>(seconds));
    if (!allDecoded(contestants)) {
        return 1;
    }
    printTable(contestants);
    std::printf("\n");
    for (const Contestant& contestant : contestants) {
        printDifferences(contestant, *find(contestants, OURS));
    }
    std::printf("\n");
    std::printf("%s, divided by the fastest other that checks the CRC_32\n", OURS_AFTER_CRC_32);
    printRatios(contestants, "of those used as documented", true);
    printRatios(contestants, "of all", false);
    return 0;
}
