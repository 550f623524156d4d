#include "TypicalSections.h"

#include <benchmark/benchmark.h>

namespace {

void parseAndDestroy(benchmark::State& state, const TypicalSection& section) {
    const HeapBytes bytes(section.bytes);
    for (auto round : state) {
        static_cast<void>(round);
        if (!section.parseAndDestroy(bytes.data(), bytes.size())) {
            state.SkipWithError("refused");
        }
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    for (const TypicalSection& section : typicalSections()) {
        benchmark::RegisterBenchmark(section.table, parseAndDestroy, section);
    }
    benchmark::RunSpecifiedBenchmarks();
}
