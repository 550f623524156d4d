#pragma once

#include "FourSections.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <functional>

/// The kinds of descriptors that the four sections carry.
enum class Kind : std::size_t {
    NETWORK_NAME,
    SERVICE_LIST,
    SERVICE,
    LINKAGE,
    COMPONENT,
    STREAM_IDENTIFIER,
    CA_IDENTIFIER,
    PARENTAL_RATING,
    TS_INFORMATION,
    TERRESTRIAL_DELIVERY,
    PARTIAL_RECEPTION,
    COUNT
};

/// What was read out of the typed fields of one section: the proof that it was decoded.
struct Readout {
    /// Programs, elementary streams, services or transport streams.
    unsigned entries = 0;
    /// Descriptors that were decoded to typed fields.
    unsigned descriptors = 0;
    /// Sum of the fields of the table and of its entries.
    QUOR_U32 table = 0;
    /// For each kind, the number of its descriptors plus the sum of their fields; 0 for a kind that was not decoded.
    std::array<QUOR_U32, static_cast<std::size_t>(Kind::COUNT)> kinds{};

    void addEntry(QUOR_U32 fields) {
        ++entries;
        table += fields;
    }

    void addDescriptor(Kind kind, QUOR_U32 fields) {
        ++descriptors;
        kinds[static_cast<std::size_t>(kind)] += 1 + fields;
    }
};

/// Reads one section, the next version each time: decodes it, reads it out, destroys it. No entries: it was refused.
using Reader = std::function<Readout()>;

/// A library that decodes sections: what makes a reader of the section of each table, in the order of TABLES.
using Peer = std::array<Reader (*)(const Versions&), TABLES.size()>;

/// What is compared.
struct Candidate {
    const char* name;
    /// Null when the library is not installed.
    Peer (*make)();
};

constexpr const char* OURS = "QuorISDBT";
constexpr const char* OURS_AFTER_CRC_32 = "CRC_32, then QuorISDBT";

/// All of them, installed or not.
extern const std::array<Candidate, 6> CANDIDATES;

Peer quorIsdbt();
Peer quorIsdbtAfterCrc32();
// Weak: the source of a library that is not installed is left out.
[[gnu::weak]] Peer libdvbpsi();
[[gnu::weak]] Peer libdvbv5();
[[gnu::weak]] Peer gstreamer();
[[gnu::weak]] Peer biTStream();

/// A reader for a library that is given the bytes of a section.
template <Readout (*read)(QUOR_U8*, QUOR_U32)> Reader readVersions(const Versions& versions) {
    return [sections = Versions(versions), next = std::size_t{0}]() mutable {
        ByteVector& section = sections[next++ % sections.size()];
        return read(section.data(), static_cast<QUOR_U32>(section.size()));
    };
}

/// What a readout takes from a code of three letters.
template <class Character> QUOR_U32 letters(const Character* code) {
    return static_cast<QUOR_U32>(code[0]) + static_cast<QUOR_U32>(code[1]) + static_cast<QUOR_U32>(code[2]);
}

/// What a readout takes from a name, which is never empty here.
template <class Character> QUOR_U32 name(const Character* characters, std::size_t size) {
    return static_cast<QUOR_U32>(size) + static_cast<QUOR_U32>(characters[0]);
}

inline QUOR_U32 name(const char* characters) {
    return name(characters, std::strlen(characters));
}

/// What a readout takes from a parental rating, of which GStreamer makes an age.
inline QUOR_U32 rated(QUOR_U32 rating) {
    return rating != 0 ? 1 : 0;
}

/// What a readout takes from two bytes of which not every library makes one number.
inline QUOR_U32 bytesOf(QUOR_U32 number) {
    return (number >> 8) + (number & 0xFFU);
}
