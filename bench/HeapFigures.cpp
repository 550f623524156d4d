#include "TypicalSections.h"

#include <cstdio>
#include <cstdlib>
#include <new>

// What the typical section of each table asks of the heap, from its parse to its destruction.

namespace {

std::size_t requests = 0;
std::size_t requested = 0;

} // namespace

void* operator new(std::size_t size) {
    ++requests;
    requested += size;
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
    std::free(memory);
}

int main() {
    std::printf("%-7s %13s %13s %10s\n", "table", "section bytes", "heap requests", "heap bytes");
    for (const TypicalSection& section : typicalSections()) {
        const HeapBytes bytes(section.bytes);
        requests = 0;
        requested = 0;
        if (!section.parseAndDestroy(bytes.data(), bytes.size())) {
            std::fprintf(stderr, "%s refused\n", section.table);
            return 1;
        }
        std::printf("%-7s %13u %13zu %10zu\n", section.table, bytes.size(), requests, requested);
    }
    return 0;
}
