// Parses and destroys sections under callgrind, which counts the instructions of each one. tests/time/run compares
// them.

#include "DSMCCSection/TDSMCCSectionTable.h"
#include "QuorLogger.h"
#include "ait/TAITTable.h"
#include "nit/TNITTable.h"
#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"
#include "sdt/TSDTTable.h"
#include "sdtt/TSDTTTable.h"
#include "time/Shapes.h"
#include "tot/TTOTTable.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <valgrind/callgrind.h>

namespace {

constexpr std::size_t LARGEST = 4096;

bool unknownDescriptorLogged = false;
bool formatting = true;

using Quor::TISDBTTable;

template <class Table> TISDBTTable* parseAs(const HeapBytes& bytes) {
    return Table::parse(bytes.data(), bytes.size(), 1, 1, nullptr, nullptr);
}

struct Parser {
    QUOR_U8 tableId;
    TISDBTTable* (*parse)(const HeapBytes& bytes);
};

constexpr Parser PARSERS[] = {
    {0x00, parseAs<Quor::TPATTable>},          {0x02, parseAs<Quor::TPMTTable>}, {0x40, parseAs<Quor::TNITTable>},
    {0x3D, parseAs<Quor::TDSMCCSectionTable>}, {0x42, parseAs<Quor::TSDTTable>}, {0x73, parseAs<Quor::TTOTTable>},
    {0xC3, parseAs<Quor::TSDTTTable>},         {0x74, parseAs<Quor::TAITTable>},
};

/// Parses and destroys. @return whether there was a table.
bool parse(const ByteVector& section) {
    const HeapBytes bytes(section);
    for (const Parser& each : PARSERS) {
        if (!section.empty() && each.tableId == section[0]) {
            return std::unique_ptr<TISDBTTable>(each.parse(bytes)) != nullptr;
        }
    }
    return false;
}

/// The same, counted, under a label "TABLE KIND SIZE NAME".
void measureOnce(const Shape& shape, const std::string& kind, const std::string& name, const ByteVector& section) {
    char label[128];
    std::snprintf(label, sizeof label, "%s %s %zu %s", shape.name.c_str(), kind.c_str(), section.size(), name.c_str());
    CALLGRIND_ZERO_STATS;
    parse(section);
    CALLGRIND_DUMP_STATS_AT(label);
}

/// With a logger that formats its lines, and with one that does not.
void measure(const Shape& shape, const std::string& kind, const std::string& name, const ByteVector& section) {
    measureOnce(shape, kind + ",formatted", name, section);
    formatting = false;
    measureOnce(shape, kind, name, section);
    formatting = true;
}

/// The largest section of at most 4096 bytes.
template <class Make> ByteVector largest(Make make) {
    ByteVector section = make(0);
    for (unsigned count = 1; count < LARGEST && make(count).size() <= LARGEST; ++count) {
        section = make(count);
    }
    return section;
}

void measureUsual(const Shape& shape) {
    const ByteVector smallest = shape.usual(0);
    const ByteVector full = largest(shape.usual);
    if (!parse(smallest) || !parse(full)) {
        throw std::logic_error(shape.name + " as it is usual is refused");
    }
    measure(shape, "usual", "smallest", smallest);
    measure(shape, "usual", "largest", full);
}

/// As many descriptors as there is room for.
ByteVector filled(const Shape& shape, const ByteVector& descriptor) {
    const std::size_t room = LARGEST - shape.withDescriptors({}).size();
    return repeated(static_cast<unsigned>(room / descriptor.size()), [&](unsigned) { return descriptor; });
}

void measureFilled(const Shape& shape, const std::string& name, const ByteVector& descriptor) {
    measure(shape, "dense", name, shape.withDescriptors(filled(shape, descriptor)));
}

/// The last one overruns the section.
void measureRefusedLate(const Shape& shape, const std::string& name, const ByteVector& descriptor) {
    ByteVector descriptors = filled(shape, descriptor);
    descriptors[descriptors.size() - descriptor.size() + 1] = 0xFF;
    measure(shape, "dense", name + ",refused-at-its-end", shape.withDescriptors(descriptors));
}

/// The smallest descriptor of a tag that is accepted, all zeros.
ByteVector smallest(const Shape& shape, QUOR_U8 tag) {
    for (unsigned length = 0; length < 0xFF; ++length) {
        const ByteVector wire = descriptor(tag, fill(length, 0));
        if (parse(shape.withDescriptors(wire))) {
            return wire;
        }
    }
    return descriptor(tag, fill(1, 0));
}

void measureDescriptors(const Shape& shape) {
    bool unknownMeasured = false;
    for (unsigned tag = 0; tag <= 0xFF; ++tag) {
        unknownDescriptorLogged = false;
        const ByteVector least = smallest(shape, static_cast<QUOR_U8>(tag));
        char name[32];
        std::snprintf(name, sizeof name, "0x%02X", tag);
        if (unknownDescriptorLogged) {
            if (!unknownMeasured) {
                measureFilled(shape, std::string(name) + ",unknown", least);
                measureRefusedLate(shape, std::string(name) + ",unknown", least);
                unknownMeasured = true;
            }
            continue;
        }
        measureFilled(shape, std::string(name) + ",smallest", least);
        measureRefusedLate(shape, std::string(name) + ",smallest", least);
        for (const QUOR_U8 value : {QUOR_U8{0x00}, QUOR_U8{0x01}, QUOR_U8{0x41}}) {
            measureFilled(shape, std::string(name) + ",longest",
                          descriptor(static_cast<QUOR_U8>(tag), fill(0xFC, value)));
        }
    }
}

void measureCorpus(const Shape& shape, const std::filesystem::path& folder) {
    constexpr std::ptrdiff_t FUZZER_HEADER = 3;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::ifstream file(entry.path(), std::ios::binary);
        const ByteVector bytes{std::istreambuf_iterator<char>(file), {}};
        if (bytes.size() > FUZZER_HEADER && bytes[FUZZER_HEADER] == shape.tableId) {
            measure(shape, "corpus", entry.path().filename(), ByteVector(bytes.begin() + FUZZER_HEADER, bytes.end()));
        }
    }
}

} // namespace

/// Formats each line, as a receiver's logger does, or drops it at once, as one does whose level is lower.
extern "C" __attribute__((visibility("default"))) void quor_log_std_generic(int /*level*/, const char* /*tag*/,
                                                                            const char* format, ...) {
    if (formatting) {
        char line[1024];
        va_list values;
        va_start(values, format);
        std::vsnprintf(line, sizeof line, format, values);
        va_end(values);
    }
    unknownDescriptorLogged = unknownDescriptorLogged || std::strstr(format, "Unknown descriptor") != nullptr;
}

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("Usage: parse-cost CORPUS\n", stderr);
        return 2;
    }
    parse(fill(3, 0)); // so that what is only done once is done
    for (const Shape& shape : shapes()) {
        measureUsual(shape);
        if (shape.withEntries != nullptr) {
            measure(shape, "dense", "smallest-entries", largest(shape.withEntries));
        }
        if (shape.withDescriptors != nullptr) {
            measureDescriptors(shape);
        }
        measureCorpus(shape, argv[1]);
    }
    return 0;
}
