#pragma once

#include "pmt/TPMTTable.h"
#include "pmt/TProgramMap.h"
#include "support/Kinds.h"
#include "support/Sections.h"

/// A kind of the program map table, with the accessor that can fall back on the table.
struct ProgramKind : DescriptorKind<Quor::TPMTTable, Quor::TProgramMap> {
    std::function<Quor::TISDBTDescriptor*(const Quor::TProgramMap&, int inherit, int* inherited)> ofStream;
};

inline void PrintTo(const ProgramKind& kind, std::ostream* out) {
    *out << kind.name;
}

/// The kinds in the order of getDescriptorTags().
inline std::vector<ProgramKind> programKinds() {
    std::vector<ProgramKind> kinds;
    forEachHeld<Quor::TPMTTable>(classRows(), [&kinds](const auto& row) {
        const auto ofStream = getterOf<Quor::TProgramMap>(row.in);
        ProgramKind kind = kindOf<ProgramKind>(row);
        kind.ofTable = getterOf<Quor::TPMTTable>(row.in);
        kind.ofEntry = [ofStream](const Quor::TProgramMap& stream) { return (stream.*ofStream)(0, nullptr); };
        kind.ofStream = ofStream;
        kinds.push_back(kind);
    });
    return inOrder(kinds, hex("53 0D 49 4A 50 51 52 55 C0 C1 FC FD FE C6 C8 DE F7 F8 28 2A 7C 13"));
}

/// An elementary stream entry: stream_type | elementary_PID | ES_info_length | descriptors.
inline ByteVector stream(QUOR_U8 streamType, unsigned pid, const ByteVector& descriptors = {}) {
    return join({{streamType}, u16(pid, 0xE000), loopOf(descriptors)});
}

/// A program map section of PCR_PID 0x0100.
inline ByteVector pmt(const ByteVector& programDescriptors, const ByteVector& streams, const LongHeader& header = {}) {
    return longSection(0x02, header, join({hex("E100"), loopOf(programDescriptors), streams}));
}
