#include "pat/TPATTable.h"
#include "support/Bytes.h"
#include "tot/TTOTTable.h"

#include <benchmark/benchmark.h>

#include <memory>

namespace {

/// Parses and destroys one section.
template <class Table> void parseAndDestroy(benchmark::State& state, const ByteVector& section) {
    const HeapBytes bytes(section);
    for (auto round : state) {
        static_cast<void>(round);
        QUOR_U16 error = 0;
        const std::unique_ptr<Table> table(Table::parse(bytes.data(), bytes.size(), 1, 1, &error, nullptr));
        benchmark::DoNotOptimize(table.get());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(section.size()));
}

void programAssociation(benchmark::State& state) {
    parseAndDestroy<Quor::TPATTable>(state,
                                     longSection(0x00, {0x0640, 1}, hex("0000 E010  C820 E100  C821 E101  C838 FFC8")));
}
BENCHMARK(programAssociation);

void timeOffset(benchmark::State& state) {
    parseAndDestroy<Quor::TTOTTable>(state,
                                     shortSection(0x73, hex("EE4E 120000  F01C  58 1A  425241 09 0300 EEFF030000 0300  "
                                                            "42524C 0D 0400 EEFF040000 0400")));
}
BENCHMARK(timeOffset);

} // namespace
