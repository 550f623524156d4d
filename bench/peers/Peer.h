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
    /// Sum of the fields of the table, its version among them, and of its entries.
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

    template <class ReadOut> void read(ReadOut readOut) { readOut(*this); }
};

/// In the place of a readout where fields are decoded and nobody reads them.
struct Unread {
    template <class ReadOut> void read(ReadOut /*readOut*/) {}
};

/// A library with the sections of one table; each call takes the next version.
struct Decoder {
    /// Decodes a section to typed fields and destroys them: what is timed. False: it was refused.
    std::function<bool()> decode;
    /// The same, and reads the fields out before they are destroyed. No entries: it was refused.
    std::function<Readout()> readOut;
};

/// A library that decodes sections: what makes a decoder for each table, in the order of TABLES.
using Peer = std::array<Decoder (*)(const Versions&), TABLES.size()>;

/// What is compared.
struct Candidate {
    const char* name;
    /// Null when the library is not installed.
    Peer (*make)();
    /// Whether the library is used as its makers do.
    bool asDocumented = true;
};

/// What the name of a candidate takes in a table.
constexpr int NAME_WIDTH = 32;

constexpr const char* OURS = "QuorISDBT";
constexpr const char* OURS_AFTER_CRC_32 = "CRC_32, then QuorISDBT";

/// All of them, installed or not.
extern const std::array<Candidate, 8> CANDIDATES;

Peer quorIsdbt();
Peer quorIsdbtAfterCrc32();
// Weak: the source of a library that is not installed is left out.
[[gnu::weak]] Peer libdvbpsi();
[[gnu::weak]] Peer libdvbv5();
[[gnu::weak]] Peer gstreamer();
[[gnu::weak]] Peer biTStream();
[[gnu::weak]] Peer biTStreamCheckedFirst();
[[gnu::weak]] Peer biTStreamByHand();

/// Decodes a section from its bytes, and destroys what came of it. False: it was refused.
template <class Out> using Decode = bool (*)(Out&, QUOR_U8* section, QUOR_U32 size);

/// The versions of a section, one after the other before a library that is given its bytes.
template <class Out, Decode<Out> decode> class Turns {
public:
    explicit Turns(const Versions& sections) : m_sections(sections) {}

    bool decodeNext() {
        m_out = Out();
        ByteVector& section = m_sections[m_next++ % m_sections.size()];
        return decode(m_out, section.data(), static_cast<QUOR_U32>(section.size()));
    }
    const Out& out() const { return m_out; }

private:
    Versions m_sections;
    std::size_t m_next = 0;
    Out m_out;
};

/// A decoder for a library that is given the bytes of a section.
template <class Timed, Decode<Timed> decode, Decode<Readout> readOut> Decoder decoderOf(const Versions& versions) {
    return {[turns = Turns<Timed, decode>(versions)]() mutable { return turns.decodeNext(); },
            [turns = Turns<Readout, readOut>(versions)]() mutable {
                turns.decodeNext();
                return turns.out();
            }};
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

/// What a readout takes from the version of a table, and from whether it applies already.
inline QUOR_U32 versioned(QUOR_U32 version, bool current) {
    return version + (current ? 1 : 0);
}

/// What a readout takes from a parental rating, of which GStreamer makes an age.
inline QUOR_U32 rated(QUOR_U32 rating) {
    return rating != 0 ? 1 : 0;
}

/// What a readout takes from two bytes of which not every library makes one number.
inline QUOR_U32 bytesOf(QUOR_U32 number) {
    return (number >> 8) + (number & 0xFFU);
}
